#include "vxprivacy/hosts/web/WebSurface.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/hosts/web/Addresses.h"
#include "vxprivacy/hosts/web/Page.h"
#include "vxprivacy/hosts/web/Painter.h"
#include "vxprivacy/platform/ui/Touch.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::web {

namespace {

using Json = nlohmann::ordered_json;

// What was left to the defaults.
PageSettings complete(PageSettings settings) {
    if (settings.language.empty())
        settings.language = VXMobilePrivacy::sharedInstance().languageCode().value_or("en");
    if (!settings.texts)
        settings.texts = hostTexts(settings.language);
    if (settings.title.empty())
        settings.title = settings.texts->title;
    return settings;
}

std::string textOf(const Json& event, const char* key) {
    const auto found = event.find(key);
    return found != event.end() && found->is_string() ? found->get<std::string>() : "";
}

double numberOf(const Json& event, const char* key) {
    const auto found = event.find(key);
    return found != event.end() && found->is_number() ? found->get<double>() : 0;
}

bool liesInOneOf(const View& view, const std::vector<const View*>& others) {
    return std::ranges::any_of(
        others, [&](const View* other) { return &view != other && view.isDescendantOf(*other); });
}

} // namespace

struct WebSurface::Parts {
    Parts(std::shared_ptr<View> view, PageSettings given)
        : root(std::move(view)), settings(complete(std::move(given))), painter(*settings.texts) {
        root->beginRecordingChanges();
    }

    void scroll(ScrollView& view, ScrollView::Offset shown);
    void addChanges(Json& patch);
    void addElements(Json& patch, const std::vector<ViewChange>& changes);
    void addScrolling(Json& patch, const std::vector<ViewChange>& changes);

    const std::shared_ptr<View> root;
    const PageSettings settings;
    Painter painter;
    Json opened = Json::array();
};

WebSurface::WebSurface(std::shared_ptr<View> root, PageSettings settings)
    : parts_(std::make_unique<Parts>(std::move(root), std::move(settings))) {}

WebSurface::~WebSurface() = default;

std::string WebSurface::render() {
    auto& [root, settings, painter, opened] = *parts_;
    painter.beginScreen(*root);
    const std::string& frameClass = painter.styles().className(frame(*root));
    const std::string screen = painter.whole(*root);
    root->takeChanges(); // the page has them
    painter.styles().takeNewRules();
    return document({.settings = settings,
                     .policy = contentSecurityPolicy(),
                     .colours = painter.colours(),
                     .frame = frameClass,
                     .screen = screen});
}

std::string WebSurface::layoutCSS() const {
    return parts_->painter.styles().text();
}

std::string WebSurface::dispatch(std::string_view text) {
    const Json event = Json::parse(text, nullptr, false);
    Json patch = Json::object();
    if (!event.is_object())
        return patch.dump();
    const auto& elements = parts_->painter.elements();
    const auto isShown = [&](const auto& view) {
        return view && view->isDescendantOf(*parts_->root);
    };
    if (const auto tapped = elements.view(textOf(event, "tap")); isShown(tapped))
        touch(*tapped);
    const auto moved = elements.view(textOf(event, "scroll"));
    if (auto* scrolled = isShown(moved) ? viewAs<ScrollView>(*moved) : nullptr)
        parts_->scroll(*scrolled, {numberOf(event, "x"), numberOf(event, "y")});
    parts_->addChanges(patch);
    return patch.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void WebSurface::Parts::scroll(ScrollView& view, ScrollView::Offset shown) {
    painter.elements().of(view).scrolled = shown;
    view.scrolledTo(shown);
}

void WebSurface::Parts::addChanges(Json& patch) {
    const auto changes = root->takeChanges();
    addElements(patch, changes);
    addScrolling(patch, changes);
    if (auto rules = painter.styles().takeNewRules(); !rules.empty())
        patch["rules"] = std::move(rules);
    if (!opened.empty())
        patch["open"] = std::exchange(opened, Json::array());
}

void WebSurface::Parts::addElements(Json& patch, const std::vector<ViewChange>& changes) {
    std::vector<const View*> rebuilt;
    for (const auto& [view, what] : changes)
        if (what == ViewChange::What::Subviews)
            rebuilt.push_back(view.get());
    for (const auto& [view, what] : changes) {
        const bool whole = what == ViewChange::What::Subviews;
        const bool known = std::ranges::find(rebuilt, view.get()) != rebuilt.end();
        if (what == ViewChange::What::Scrolling || liesInOneOf(*view, rebuilt) || (!whole && known))
            continue;
        patch[whole ? "whole" : "own"].push_back(whole ? painter.whole(*view) : painter.own(*view));
    }
    if (!rebuilt.empty())
        painter.elements().forgetGone();
}

// A page that moved by itself need only hear where the module wants something else.
void WebSurface::Parts::addScrolling(Json& patch, const std::vector<ViewChange>& changes) {
    for (const auto& [view, what] : changes) {
        const auto* scrolled = viewAs<ScrollView>(*view);
        if (what != ViewChange::What::Scrolling || !scrolled)
            continue;
        Element& element = painter.elements().of(*view);
        const auto wanted = scrolled->contentOffset();
        if (std::exchange(element.scrolled, wanted) != wanted)
            patch["scroll"][element.id] = {wanted.x, wanted.y};
    }
}

void WebSurface::open(std::string_view address) {
    if (mayOpen(address))
        parts_->opened.push_back(address);
}

std::string_view contentSecurityPolicy() {
    return "default-src 'none'; style-src 'self'; script-src 'self'; connect-src 'self'; "
           "img-src 'self'; base-uri 'none'; form-action 'none'";
}

} // namespace vx::web
