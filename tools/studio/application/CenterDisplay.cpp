// Shows the privacy center as a page, and reports taps, addresses and choices.

#include "tools/studio/application/CenterDisplay.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "tools/studio/application/StudioReport.h"
#include "vxprivacy/hosts/web/Addresses.h"
#include "vxprivacy/platform/ui/Touch.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::tools::studio {

namespace {

constexpr double kHeightOfWidth = 844.0 / 390; // as a phone's display
// Points, of a popup that no page has measured: as `vxprivacy play` has it.
constexpr double kUnseenFrame = 500;
constexpr double kUnseenContent = 2000;

// The title of the row that a view belongs to; empty where it is in none.
std::string rowOf(const View& view) {
    for (const View* each = &view; each; each = each->superview())
        if (each->row())
            if (const auto title = each->row()->title.lock())
                return title->text();
    return {};
}

void reportTap(const Button& button) {
    const std::string row = rowOf(button);
    report("screen", (row.empty() ? "" : row + ": ") + button.title() + " tapped");
}

Json presenting(Mode mode, const Presentation& presentation) {
    if (mode == Mode::Category)
        return {{"do", "present"}, {"center", "category"}};
    return {{"do", "present"},
            {"center", "iab"},
            {"first", presentation.first},
            {"how", presentation.pushed ? "push" : "modal"}};
}

std::optional<std::string> nameOf(const View& view, const ViewsDictionary& names) {
    for (const auto& [name, named] : names)
        if (named.get() == &view)
            return name;
    return {};
}

Json changes(const ShownCenter::Choices& before, const ShownCenter::Choices& after) {
    ShownCenter::Choices changes;
    std::ranges::set_difference(after, before, std::inserter(changes, changes.end()));
    return changes;
}

} // namespace

CenterDisplay::CenterDisplay(SessionSteps& steps) : steps_(steps) {
    navigation_.pushViewController(application_);
}

void CenterDisplay::present(Mode mode, const Presentation& presentation) {
    show(mode, presentation);
    surface_->whenLaidOut([this] { center_->controller().viewDidAppear(true); });
    steps_.step({{"do", "screen"}});
}

void CenterDisplay::presentUnseen(Mode mode, const Presentation& presentation) {
    show(mode, presentation);
    isPlayed_ = true;
    if (ScrollView* popup = center_->popup())
        popup->setMeasures(kUnseenFrame, kUnseenContent);
    reading_ = {0, kUnseenFrame, kUnseenContent}; // nobody's
    center_->controller().viewDidAppear(true);
    steps_.step({{"do", "screen"}});
}

void CenterDisplay::show(Mode mode, const Presentation& presentation) {
    steps_.step(presenting(mode, presentation));
    report("screen", "Privacy center opened");
    center_ = mode == Mode::IAB ? iabCenter(presentation.first) : categoryCenter();
    ViewController& controller = center_->controller();
    controller.setDelegate(this);
    if (presentation.pushed)
        navigation_.pushViewController(controller);
    else
        application_.presentViewController(controller);
    controller.view()->setSize(presentation.width, presentation.width * kHeightOfWidth);
    controller.viewDidLoad();
    surface_ = std::make_unique<web::WebSurface>(controller.view(),
                                                 web::PageSettings{.surfaceJS = "center.js"});
    surface_->whenTouched([this](View& view) { touched(view); });
    ++number_;
    reading_ = {};
    isPlayed_ = false;
}

void CenterDisplay::dismiss() {
    steps_.step({{"do", "dismiss"}});
    leave();
}

void CenterDisplay::leave() {
    report("screen", "Privacy center left, the choices are saved", center_->choices());
    center_->controller().viewWillDisappear(true);
    surface_.reset();
    center_.reset();
    closed_ = false;
    steps_.step({{"do", "screen"}});
}

std::string CenterDisplay::dispatch(std::string_view event) {
    event_ = web::eventIn(event);
    if (isOldNews(event_))
        return surface_->dispatch(dumped({{"page", event_.page}}));
    std::string patch = surface_->dispatch(event);
    tellScrolling();
    endEvent();
    return patch;
}

bool CenterDisplay::tap(const std::string& name, std::optional<std::size_t> character) {
    const std::shared_ptr<View>* found = center_->names().find(name);
    const std::shared_ptr<View> view = found ? *found : nullptr;
    if (!view || !view->isDescendantOf(*center_->controller().view()))
        return false;
    event_ = {};
    event_.kind = web::Event::Kind::Tap;
    event_.character = character;
    touched(*view);
    if (character)
        view->tap(*character);
    else
        touch(*view);
    endEvent();
    return true;
}

bool CenterDisplay::scroll(double y, double frameHeight, double contentHeight) {
    ScrollView* popup = center_->popup();
    if (!popup)
        return false;
    popup->setMeasures(frameHeight, contentHeight);
    popup->scrolledTo({0, y});
    tellScrolling();
    return true;
}

// Of a session that is played: that the page followed it. What the user reads further counts.
bool CenterDisplay::isOldNews(const web::Event& event) const {
    return isPlayed_ && event.kind == web::Event::Kind::Scroll && center_->popup() &&
           event.offset.y <= reading_.y;
}

void CenterDisplay::endEvent() {
    if (std::exchange(tapped_, false))
        steps_.step({{"do", "screen"}});
    for (const std::string& address : std::exchange(opened_, {}))
        report("screen", (web::mayOpen(address) ? "Opens " : "Does not open ") + address);
    reportSwitching();
    if (closed_)
        leave();
}

Json CenterDisplay::state() const {
    if (!shows())
        return {};
    const auto text = center_->leaveText();
    return {{"number", number_},
            {"revision", surface_->revision()},
            {"saveButton", text ? Json(*text) : Json()},
            {"closesItself", center_->closesItself()}};
}

// The patch under way carries it; what was tapped is reported before where that leads.
void CenterDisplay::openURL(std::string_view address) {
    surface_->open(address);
    opened_.emplace_back(address);
}

// The center is still at work on the tap that closes it.
void CenterDisplay::viewControllerDismissed(ViewController&, bool) {
    closed_ = true;
}

void CenterDisplay::viewControllerPopped(ViewController&, bool) {
    closed_ = true;
}

// A tap is reported before where it leads, a switch with the choices that it makes.
void CenterDisplay::touched(View& view) {
    tellTouch(view);
    visit(view, Overloaded{[this](Switch& control) {
                               switched_ =
                                   std::static_pointer_cast<Switch>(control.shared_from_this());
                               before_ = center_->choices();
                           },
                           [this](const Button& button) {
                               if (!button.enabled())
                                   return;
                               reportTap(button);
                               tapped_ = true;
                           },
                           [](const View&) {}});
}

// A switch that is told to stand as it stood does all the same what it carries: as after two taps.
void CenterDisplay::tellTouch(View& view) {
    const auto name = nameOf(view, center_->names());
    if (!name)
        return steps_.remark("a tap on a view that has no layout name");
    const Json tap = {{"do", "tap"}, {"name", *name}};
    visit(
        view,
        Overloaded{
            [&](const Switch& control) {
                if (event_.kind == web::Event::Kind::Set && control.on() == event_.on)
                    steps_.step(tap);
                steps_.step(tap);
            },
            [&](const Label& label) {
                if (!label.link())
                    steps_.step(tap);
                else if (event_.character)
                    steps_.step({{"do", "tapText"}, {"name", *name}, {"index", *event_.character}});
            },
            [&](const View&) { steps_.step(tap); }});
}

// What it causes is never told of.
void CenterDisplay::tellScrolling() {
    const ScrollView* popup = center_->popup();
    if (!popup || popup->contentHeight() == 0)
        return;
    const Reading reading = {std::max(popup->contentOffset().y, reading_.y), popup->frameHeight(),
                             popup->contentHeight()};
    if (std::exchange(reading_, reading) != reading)
        steps_.step({{"do", "scroll"},
                     {"y", reading.y},
                     {"frameHeight", reading.frameHeight},
                     {"contentHeight", reading.contentHeight}});
}

void CenterDisplay::reportSwitching() {
    const auto control = std::exchange(switched_, nullptr);
    if (!control)
        return;
    report("screen", rowOf(*control) + (control->on() ? " switched on" : " switched off"),
           changes(before_, center_->choices()));
    steps_.step({{"do", center_->choicesQuestion()}});
}

} // namespace vx::tools::studio
