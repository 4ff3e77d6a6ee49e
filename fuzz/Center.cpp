// A privacy center of any configuration, stored entries, vendor list and translation, painted and
// driven by any events. Without a vendor list it is the category center.

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "fuzz/Input.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/testing/World.h"

namespace {

using namespace vx;
using fuzz::require;
using recording::Event;

// A JSON object of texts; empty for all else.
recording::Texts textsIn(const std::string& text) {
    recording::Texts texts;
    const Event object = Event::parse(text, nullptr, false);
    if (object.is_object())
        for (const auto& [key, value] : object.items())
            if (value.is_string())
                texts[key] = value.get<std::string>();
    return texts;
}

std::unique_ptr<ViewController> makeCenter(bool iab) {
    if (iab)
        return std::make_unique<VXIABPrivacyCenterViewController>();
    return std::make_unique<VXPrivacyCenterViewController>();
}

// More of them reach nothing new, and each takes as long as the making of a center.
constexpr std::size_t kMostActs = 40;

// What a user does, two bytes each.
class User {
public:
    User(std::unique_ptr<ViewController> center, web::WebSurface& surface)
        : center_(std::move(center)), surface_(surface) {
        visit();
    }

    void act(unsigned char what, unsigned char where) {
        const std::string element = "\"v" + std::to_string(where) + '"';
        switch (what % 10) {
        case 0:
            return send(R"("tap":)" + element);
        case 1:
            return send(R"("on":true,"set":)" + element);
        case 2:
            return send(R"("on":false,"set":)" + element);
        case 3:
            return send(R"("x":9,"y":)" + std::to_string(1e6 / (1 + what)) + R"(,"scroll":)" +
                        element);
        case 4:
            return visit();
        case 5:
            return appear();
        case 6:
            center_.reset(); // the views stay
            return;
        case 7: // a word of a text
            return send(R"("character":)" + std::to_string(what / 10) + R"(,"tap":)" + element);
        case 8: // of a page that is laid out
            return send(R"("frame":600,"content":900,"y":)" + std::to_string(what) +
                        R"(,"scroll":)" + element);
        default:
            return send(R"("n":)" + std::to_string(what) + R"(,"tap":)" + element);
        }
    }

    void sendText(std::string_view event) { require(surface_.dispatch(event).ends_with('}')); }

private:
    void send(const std::string& what) { sendText(R"({"page":")" + page_ + "\"," + what + "}"); }

    void visit() {
        const std::string page = surface_.render();
        require(!surface_.layoutCSS().empty());
        const std::string_view before = "data-page=\"";
        const std::size_t id = page.find(before) + before.size();
        page_ = page.substr(id, page.find('"', id) - id);
    }

    void appear() {
        if (!center_)
            return;
        center_->viewWillDisappear(false);
        center_->viewDidAppear(false);
    }

    std::unique_ptr<ViewController> center_;
    web::WebSurface& surface_;
    std::string page_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto [configuration, entries, list, translation, events] =
        fuzz::parts<5>(fuzz::text(data, size));
    const bool iab = !list.empty();
    web::WebSurface* shown = nullptr;
    recording::World world({.store = textsIn(entries),
                            .files = {{"privacy", std::move(configuration)},
                                      {"vendor-list", std::move(list)},
                                      {"purposes-de", std::move(translation)}},
                            .iab = iab},
                           [&](const Event& event) {
                               if (shown && event.contains("open"))
                                   shown->open(event["open"].get<std::string>());
                           });
    world.engine().setSiteID(12, 5, world.sdk());
    world.engine().setLanguage("de");
    auto center = makeCenter(iab);
    center->view()->setSize(390, 844);
    center->viewDidLoad();
    center->viewDidAppear(false);
    web::WebSurface surface(center->view());
    shown = &surface;
    User user(std::move(center), surface);
    for (std::size_t i = 0; i + 1 < std::min(events.size(), 2 * kMostActs); i += 2)
        user.act(static_cast<unsigned char>(events[i]), static_cast<unsigned char>(events[i + 1]));
    user.sendText(events);
    shown = nullptr;
    return 0;
}
