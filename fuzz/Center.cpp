// A privacy center of any configuration, stored entries, vendor list and translation, painted and
// driven by any events. Without a vendor list it is the category center.

#include <memory>
#include <string>
#include <utility>

#include "fuzz/Input.h"
#include "tools/recording/World.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"

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

// What a user does, two bytes each.
class User {
public:
    User(std::unique_ptr<ViewController> center, web::WebSurface& surface)
        : center_(std::move(center)), surface_(surface) {
        visit();
    }

    void act(unsigned char what, unsigned char where) {
        const std::string element = "v" + std::to_string(where);
        switch (what % 8) {
        case 0:
            return send({{"tap", element}});
        case 1:
            return send({{"set", element}, {"on", true}});
        case 2:
            return send({{"set", element}, {"on", false}});
        case 3:
            return send({{"scroll", element}, {"x", where}, {"y", 1e6 / (1 + what)}});
        case 4:
            return visit();
        case 5:
            return appear();
        case 6:
            center_.reset(); // the views stay
            return;
        default:
            return send({{"tap", element}, {"n", what}});
        }
    }

    void sendText(std::string_view event) { require(Event::accept(surface_.dispatch(event))); }

private:
    void send(Event event) {
        event["page"] = page_;
        sendText(event.dump());
    }

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
    for (std::size_t i = 0; i + 1 < events.size(); i += 2)
        user.act(static_cast<unsigned char>(events[i]), static_cast<unsigned char>(events[i + 1]));
    user.sendText(events);
    shown = nullptr;
    return 0;
}
