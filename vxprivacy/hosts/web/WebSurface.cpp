#include "vxprivacy/hosts/web/WebSurface.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/hosts/web/Addresses.h"
#include "vxprivacy/hosts/web/Event.h"
#include "vxprivacy/hosts/web/Names.h"
#include "vxprivacy/hosts/web/OpenPages.h"
#include "vxprivacy/hosts/web/Page.h"
#include "vxprivacy/hosts/web/Painter.h"
#include "vxprivacy/platform/ui/ControlNames.h"
#include "vxprivacy/platform/ui/Touch.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::web {

namespace {

using Json = nlohmann::ordered_json;

// Who may frame a page cannot be said in the page itself.
constexpr std::string_view kPolicy =
    "default-src 'none'; style-src 'self'; script-src 'self'; connect-src 'self'; "
    "img-src 'self'; base-uri 'none'; form-action 'none'";

constexpr const char* kNothing = "{}";
constexpr const char* kGone = R"({"gone":true})";

// Views that hear what the user did, as the platform would tell them.
void perform(const Event& event, View& view) {
    const auto* label = viewAs<Label>(view);
    if (event.kind == Event::Kind::Tap && label && label->link()) {
        if (event.character && label->link()->range.contains(*event.character))
            label->tap(*event.character);
    } else if (event.kind == Event::Kind::Tap)
        touch(view);
    else if (auto* control = viewAs<Switch>(view); control && event.kind == Event::Kind::Set)
        touch(*control, event.on);
    else if (auto* scrolled = viewAs<ScrollView>(view);
             scrolled && event.kind == Event::Kind::Scroll) {
        if (event.frameHeight > 0 && event.contentHeight > 0)
            scrolled->setMeasures(event.frameHeight, event.contentHeight);
        scrolled->scrolledTo(event.offset);
    }
}

// What the event's page must hear of the view, also when nothing changed: how the switch stands
// now, or that its content belongs elsewhere.
std::optional<ViewChange::What> owed(const Event& event, const View& view) {
    const auto* scrolled = viewAs<ScrollView>(view);
    if (viewAs<Switch>(view) && event.kind != Event::Kind::Scroll)
        return ViewChange::What::State;
    if (scrolled && event.kind == Event::Kind::Scroll && scrolled->contentOffset() != event.offset)
        return ViewChange::What::Scrolling;
    return std::nullopt;
}

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

    std::string page();
    std::string answer(const Event& event);
    void note(const std::vector<ViewChange>& changes);

    const std::shared_ptr<View> root;
    const PageSettings settings;
    Painter painter;
    OpenPages pages;
    std::uint64_t revision = 0;
    Json opened = Json::array();
    std::function<void()> laidOut;
    std::function<void(View&)> touched;

private:
    std::shared_ptr<View> shown(std::string_view element) const;
    std::string patch(OpenPage& page, const std::shared_ptr<View>& tapped);
    std::vector<ViewChange> takePending(OpenPage& page) const;
    void addElements(Json& patch, const std::vector<ViewChange>& changes);
    void addState(Json& patch, View& view);
    void addOutcome(Json& patch, const View& tapped, const std::vector<ViewChange>& changes) const;
    void addScreen(Json& patch);
    void addScrolling(Json& patch, const std::vector<ViewChange>& changes);
};

WebSurface::WebSurface(std::shared_ptr<View> root, PageSettings settings)
    : parts_(std::make_shared<Parts>(std::move(root), std::move(settings))) {}

WebSurface::~WebSurface() = default;

std::string WebSurface::render() {
    return parts_->page();
}

std::string WebSurface::layoutCSS() const {
    return parts_->painter.styles().text();
}

std::string WebSurface::dispatch(std::string_view event) {
    const auto kept = parts_; // what the user does may be the end of the surface
    return kept->answer(eventIn(event));
}

void WebSurface::open(std::string_view address) {
    if (mayOpen(address))
        parts_->opened.push_back(address);
}

void WebSurface::whenLaidOut(std::function<void()> action) {
    parts_->laidOut = std::move(action);
}

void WebSurface::whenTouched(std::function<void(View&)> listener) {
    parts_->touched = std::move(listener);
}

std::uint64_t WebSurface::revision() const {
    parts_->note(parts_->root->takeChanges());
    return parts_->revision;
}

std::string WebSurface::Parts::page() {
    note(root->takeChanges());
    painter.beginScreen(*root);
    const std::string& frameClass = painter.styles().className(frame(*root));
    const std::string screen = painter.whole(*root);
    OpenPage& page = pages.add();
    page.rules = painter.styles().size();
    return document({.settings = settings,
                     .policy = kPolicy,
                     .id = page.id,
                     .colours = painter.colours(),
                     .frame = frameClass,
                     .screen = screen});
}

std::string WebSurface::Parts::answer(const Event& event) {
    OpenPage* page = pages.find(event.page, event.run);
    if (!page)
        return kGone;
    if (event.number != 0 && event.number <= page->number) // sent again
        return event.number == page->number ? page->answer : kNothing;
    const auto view = shown(event.element);
    if (view && touched && event.kind != Event::Kind::Scroll)
        touched(*view);
    if (view)
        perform(event, *view);
    if (laidOut && event.kind != Event::Kind::Tap && event.kind != Event::Kind::Set)
        std::exchange(laidOut, nullptr)();
    auto changes = root->takeChanges();
    std::erase_if(changes, [&](const ViewChange& change) { // where one page scrolls to is its own
        return event.kind == Event::Kind::Scroll && change.view == view &&
               change.what == ViewChange::What::Scrolling;
    });
    note(changes);
    page = pages.find(event.page, event.run); // what was done may have made pages
    if (!page)
        return kGone;
    if (const auto what = view ? owed(event, *view) : std::nullopt)
        page->pending.push_back({view, *what});
    page->number = std::max(page->number, event.number);
    return page->answer = patch(*page, event.kind == Event::Kind::Scroll ? nullptr : view);
}

std::shared_ptr<View> WebSurface::Parts::shown(std::string_view element) const {
    auto view = painter.elements().view(element);
    return view && view->isDescendantOf(*root) ? view : nullptr;
}

void WebSurface::Parts::note(const std::vector<ViewChange>& changes) {
    if (changes.empty())
        return;
    ++revision;
    pages.note(changes);
}

std::string WebSurface::Parts::patch(OpenPage& page, const std::shared_ptr<View>& tapped) {
    const auto changes = takePending(page);
    Json patch = Json::object();
    addElements(patch, changes);
    if (tapped)
        addOutcome(patch, *tapped, changes);
    addScrolling(patch, changes);
    for (const std::string& rule : painter.styles().after(page.rules))
        patch["rules"].push_back(rule);
    page.rules = painter.styles().size();
    if (!opened.empty())
        patch["open"] = std::exchange(opened, Json::array());
    return patch.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// Each view that is shown still, once for each kind of change.
std::vector<ViewChange> WebSurface::Parts::takePending(OpenPage& page) const {
    auto changes = std::exchange(page.pending, {});
    std::set<std::pair<const View*, ViewChange::What>> known;
    std::erase_if(changes, [&](const ViewChange& change) {
        return !change.view->isDescendantOf(*root) ||
               !known.emplace(change.view.get(), change.what).second;
    });
    return changes;
}

void WebSurface::Parts::addElements(Json& patch, const std::vector<ViewChange>& changes) {
    std::vector<const View*> rebuilt;
    for (const auto& [view, what] : changes)
        if (what == ViewChange::What::Subviews)
            rebuilt.push_back(view.get());
    if (!rebuilt.empty()) // before the new ones are painted, which take the room
        painter.elements().forgetGone();
    if (std::ranges::find(rebuilt, root.get()) != rebuilt.end())
        addScreen(patch);
    for (const auto& [view, what] : changes) {
        const bool whole = what == ViewChange::What::Subviews;
        const bool known = std::ranges::find(rebuilt, view.get()) != rebuilt.end();
        if (what == ViewChange::What::Scrolling || liesInOneOf(*view, rebuilt) || (!whole && known))
            continue;
        if (what == ViewChange::What::State) {
            addState(patch, *view);
            continue;
        }
        const bool wasDisabled = painter.elements().of(*view).disabled;
        patch[whole ? "whole" : "own"].push_back(whole ? painter.whole(*view) : painter.own(*view));
        if (wasDisabled && !painter.elements().of(*view).disabled)
            patch["say"] = settings.texts->enabledNow;
    }
}

// Thousands of switches may move at once.
void WebSurface::Parts::addState(Json& patch, View& view) {
    const std::string id = painter.elements().of(view).id();
    const auto* label = viewAs<Label>(view);
    if (const auto* control = viewAs<Switch>(view))
        patch[control->on() ? "on" : "off"].push_back(id);
    else if (label && label->count())
        patch["texts"][countId(id)] = painter.textOf(*label->count());
}

// What a tap did elsewhere: how many are on now in its row, or else in the list that it is in.
void WebSurface::Parts::addOutcome(Json& patch, const View& tapped,
                                   const std::vector<ViewChange>& changes) const {
    const Row* row = rowOf(tapped);
    for (const auto& heading :
         {row ? row->title.lock() : nullptr, row ? row->section.lock() : nullptr})
        if (heading && std::ranges::find(changes, heading, &ViewChange::view) != changes.end())
            return void(patch["say"] = heading->text() + ": " + painter.textOf(*heading->count()));
}

// A root with other subviews is another screen.
void WebSurface::Parts::addScreen(Json& patch) {
    painter.beginScreen(*root);
    patch["screen"] = {{"colours", nameOf(painter.colours())},
                       {"frame", painter.styles().className(frame(*root))}};
}

void WebSurface::Parts::addScrolling(Json& patch, const std::vector<ViewChange>& changes) {
    for (const auto& [view, what] : changes)
        if (const auto* scrolled = viewAs<ScrollView>(*view);
            scrolled && what == ViewChange::What::Scrolling)
            patch["scroll"][painter.elements().of(*view).id()] = {scrolled->contentOffset().x,
                                                                  scrolled->contentOffset().y};
}

std::string_view contentSecurityPolicy() {
    static const std::string policy = std::string(kPolicy) + "; frame-ancestors 'self'";
    return policy;
}

} // namespace vx::web
