// surface_server CONFIGURATION [LANGUAGE]: shows the category center of a configuration file on
// recording doors, on a free port of 127.0.0.1 which it prints. Each visit of the page leaves the
// center and presents it anew; /recorded tells what happened since it was last asked.

#include <iostream>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include <httplib.h>
#include <unistd.h>

#include "tools/recording/World.h"
#include "tools/studio/server/Answers.h"
#include "tools/system/Files.h"
#include "tools/system/LoopbackServer.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/hosts/web/StaticFiles.h"
#include "vxprivacy/hosts/web/WebSurface.h"

namespace {

using namespace vx;

// An application whose browser is the page.
class Shown {
public:
    Shown(std::string configuration, std::string language)
        : language_(std::move(language)),
          world_({.files = {{"privacy", std::move(configuration)}}},
                 [this](const recording::Event& event) { hear(event); }) {
        world_.engine().setSiteID(12, 5, world_.sdk());
    }

    std::string page() {
        if (center_)
            center_->viewWillDisappear(false);
        surface_.reset();
        center_ = std::make_unique<VXPrivacyCenterViewController>();
        center_->view()->setSize(390, 844);
        center_->viewDidLoad();
        surface_ = std::make_unique<web::WebSurface>(
            center_->view(), web::PageSettings{.owner = "Harbour Weekly", .language = language_});
        return surface_->render();
    }

    std::string layout() const { return surface_ ? surface_->layoutCSS() : ""; }
    std::string dispatch(const std::string& event) {
        return surface_ ? surface_->dispatch(event) : "{}";
    }
    std::string takeRecorded() {
        return std::exchange(recorded_, recording::Event::array()).dump();
    }

private:
    void hear(const recording::Event& event) {
        recorded_.push_back(event);
        if (surface_ && event.contains("open"))
            surface_->open(event["open"].get<std::string>());
    }

    std::string language_;
    recording::Event recorded_ = recording::Event::array();
    recording::World world_;
    std::unique_ptr<VXPrivacyCenterViewController> center_;
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
    get("/recorded", "application/json", [&] { return shown.takeRecorded(); });
    server.Post("/event", [&](const httplib::Request& request, httplib::Response& response) {
        const std::lock_guard lock(mutex);
        response.set_content(shown.dispatch(request.body), "application/json");
    });
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2)
        return 2;
    Shown shown(tools::system::readFile(arguments[1]), count > 2 ? arguments[2] : "en");
    std::mutex mutex;
    tools::system::LoopbackServer server(
        [&](httplib::Server& routes) { addRoutes(routes, shown, mutex); });
    if (!server.start(0))
        return 1;
    std::cout << server.address() << std::endl;
    ::pause(); // whoever started it ends it
}
