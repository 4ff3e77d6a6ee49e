// surface_server CONFIGURATION [LANGUAGE]: shows the category center of a configuration file on
// recording doors, on a free port of 127.0.0.1 which it prints. Each visit of the page leaves the
// center and presents it anew; /recorded tells what happened since it was last asked.

#include "hosts/web/StaticFiles.h"
#include "hosts/web/WebSurface.h"
#include "tools/recording/World.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include <httplib.h>

namespace {

using namespace vx;

std::string read(const char* path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

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
        surface_ = std::make_unique<web::WebSurface>(center_->view(),
                                                     web::PageSettings{.language = language_});
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

// As it is: what the library compresses for a browser takes it a second for each 100 KB. For a text
// that is empty it would ask for ever, and hold up all else.
void respond(httplib::Response& response, std::string text, const char* type) {
    if (text.empty())
        return response.set_content(text, type);
    const std::size_t size = text.size();
    response.set_content_provider(
        size, type, [text = std::move(text)](std::size_t at, std::size_t length, auto& sink) {
            return sink.write(text.data() + at, length);
        });
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2)
        return 2;
    Shown shown(read(arguments[1]), count > 2 ? arguments[2] : "en");
    std::mutex mutex; // guards shown: the server has threads, the module has none
    httplib::Server server;
    server.set_keep_alive_max_count(1);
    server.set_default_headers(
        {{"Content-Security-Policy", std::string(web::contentSecurityPolicy())},
         {"X-Content-Type-Options", "nosniff"}});
    const auto get = [&](const char* path, const char* type, auto answer) {
        server.Get(path, [&mutex, type, answer](const auto&, httplib::Response& response) {
            const std::lock_guard lock(mutex);
            respond(response, std::string(answer()), type);
        });
    };
    get("/", "text/html; charset=utf-8", [&] { return shown.page(); });
    get("/layout.css", "text/css", [&] { return shown.layout(); });
    get("/surface.css", "text/css", web::surfaceCSS);
    get("/surface.js", "text/javascript", web::surfaceJS);
    get("/favicon.ico", "image/x-icon", [] { return ""; });
    get("/recorded", "application/json", [&] { return shown.takeRecorded(); });
    server.Post("/event", [&](const httplib::Request& request, httplib::Response& response) {
        const std::lock_guard lock(mutex);
        response.set_content(shown.dispatch(request.body), "application/json");
    });
    const int port = server.bind_to_any_port("127.0.0.1");
    std::cout << "http://127.0.0.1:" << port << std::endl;
    return server.listen_after_bind() ? 0 : 1;
}
