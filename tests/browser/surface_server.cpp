// surface_server CONFIGURATION [LANGUAGE [VENDOR-LIST [TRANSLATION]]]: shows the category center of
// a configuration file, or with a vendor list the IAB privacy center, on recording doors, on a free
// port of 127.0.0.1 which it prints. A list of format 3 brings the framework in force along. Each
// visit of the page leaves the center and presents it anew; /recorded tells what happened since it
// was last asked, and /detail shows what no tap leads to, the details of the first vendor on a
// screen of their own.

#include <iostream>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include <httplib.h>
#include <unistd.h>

#include "tests/browser/LayoutDescription.h"
#include "tools/studio/server/ServedFile.h"
#include "tools/studio/shared/Answers.h"
#include "tools/system/Files.h"
#include "tools/system/LoopbackServer.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/hosts/web/StaticFiles.h"
#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXVendorContentView.h"
#include "vxprivacy/iab_center/VXVendorDetailContentView.h"
#include "vxprivacy/testing/World.h"

namespace {

using namespace vx;

// An application whose browser is the page.
class Shown {
public:
    Shown(recording::Texts files, std::string language)
        : language_(std::move(language)), iab_(files.contains("vendor-list")),
          world_({.files = files, .iab = iab_, .tcf = settingsFor(files["vendor-list"])},
                 [this](const recording::Event& event) { hear(event); }) {
        world_.engine().setSiteID(12, 5, world_.sdk());
        world_.engine().setLanguage(language_);
    }

    std::string page() {
        if (center_)
            center_->viewWillDisappear(false);
        surface_.reset();
        center_ = makeCenter();
        center_->view()->setSize(390, 844);
        center_->viewDidLoad();
        surface_ = std::make_unique<web::WebSurface>(
            center_->view(), web::PageSettings{.owner = "Harbour Weekly", .language = language_});
        surface_->whenLaidOut([this] { center_->viewDidAppear(false); });
        return surface_->render();
    }

    std::string layout() const { return surface_ ? surface_->layoutCSS() : ""; }
    /// What the page's boxes are to be computed from.
    std::string constraints() const {
        return center_ ? tests::layoutDescription(*center_->view()).dump() : "[]";
    }
    std::string dispatch(const std::string& event) {
        return surface_ ? surface_->dispatch(event) : R"({"gone":true})";
    }
    std::string showDetail() {
        auto* center = dynamic_cast<VXIABPrivacyCenterViewController*>(center_.get());
        if (!center || center->vendorContentView()->detailBtns().empty())
            return "none";
        const auto detail = center->vendorContentView()->detailBtns().front();
        center->vendorContentView()->setCurrentDetail(detail);
        detail->displayWithController(*center);
        center->displayVendorDetail();
        return "shown";
    }
    std::string takeRecorded() {
        return std::exchange(recorded_, recording::Event::array()).dump();
    }

private:
    static services::TCFSettings settingsFor(const std::string& list) {
        if (JSONValue::parse(list)["gvlSpecificationVersion"].integerValue() < 3)
            return {};
        return {.profile = services::TCFProfile::InForce, .publisherCountry = "FR"};
    }

    std::unique_ptr<ViewController> makeCenter() const {
        if (iab_)
            return std::make_unique<VXIABPrivacyCenterViewController>();
        return std::make_unique<VXPrivacyCenterViewController>();
    }

    void hear(const recording::Event& event) {
        recorded_.push_back(event);
        if (surface_ && event.contains("open"))
            surface_->open(event["open"].get<std::string>());
    }

    std::string language_;
    bool iab_;
    recording::Event recorded_ = recording::Event::array();
    recording::World world_;
    std::unique_ptr<ViewController> center_;
    std::unique_ptr<web::WebSurface> surface_;
};

// `mutex` guards `shown`: the server has threads, the module has none.
void addRoutes(httplib::Server& server, Shown& shown, std::mutex& mutex) {
    server.set_default_headers(
        {{"Content-Security-Policy", std::string(web::contentSecurityPolicy())},
         {"X-Content-Type-Options", "nosniff"}});
    for (const web::StaticFile& file : web::staticFiles())
        tools::studio::serveFile(server, "/" + std::string(file.name), file);
    const auto get = [&](const char* path, const char* type, auto answer) {
        server.Get(path, [&mutex, type, answer](const auto&, httplib::Response& response) {
            const std::lock_guard lock(mutex);
            tools::studio::answerText(response, answer(), type);
        });
    };
    get("/", "text/html; charset=utf-8", [&] { return shown.page(); });
    get("/layout.css", "text/css", [&] { return shown.layout(); });
    get("/favicon.ico", "image/x-icon", [] { return std::string(); });
    get("/constraints", "application/json", [&] { return shown.constraints(); });
    get("/detail", "text/plain", [&] { return shown.showDetail(); });
    get("/recorded", "application/json", [&] { return shown.takeRecorded(); });
    server.Post("/event", [&](const httplib::Request& request, httplib::Response& response) {
        const std::lock_guard lock(mutex);
        tools::studio::answerText(response, shown.dispatch(request.body), "application/json");
    });
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2)
        return 2;
    const std::string language = count > 2 ? arguments[2] : "en";
    recording::Texts files = {{"privacy", tools::system::readFile(arguments[1])}};
    if (count > 3)
        files["vendor-list"] = tools::system::readFile(arguments[3]);
    if (count > 4)
        files["purposes-" + language] = tools::system::readFile(arguments[4]);
    Shown shown(std::move(files), language);
    std::mutex mutex;
    tools::system::LoopbackServer server(
        [&](httplib::Server& routes) { addRoutes(routes, shown, mutex); });
    if (!server.start(0))
        return 1;
    std::cout << server.address() << std::endl;
    ::pause(); // whoever started it ends it
}
