// Shows the privacy center as a page, and reports taps, addresses and choices.

#include "tools/studio/application/CenterDisplay.h"

#include <utility>

#include "tools/studio/application/StudioReport.h"
#include "vxprivacy/hosts/web/Addresses.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::tools::studio {

namespace {

constexpr double kHeightOfWidth = 844.0 / 390; // as a phone's display

// The title of the row that a view belongs to; empty where it is in none.
std::string rowOf(const View& view) {
    for (const View* each = &view; each; each = each->superview())
        if (each->row())
            if (const auto title = each->row()->title.lock())
                return title->text();
    return {};
}

void reportTapOf(Button& button) {
    button.addTouchUpInside([&button] {
        const std::string row = rowOf(button);
        report("screen", (row.empty() ? "" : row + ": ") + button.title() + " tapped");
    });
}

} // namespace

CenterDisplay::CenterDisplay() {
    navigation_.pushViewController(application_);
}

void CenterDisplay::present(Mode mode, const Presentation& presentation) {
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
    reportTapsIn(controller.view());
    surface_ = std::make_unique<web::WebSurface>(controller.view(),
                                                 web::PageSettings{.surfaceJS = "center.js"});
    surface_->whenLaidOut([&controller] { controller.viewDidAppear(true); });
    ++number_;
}

void CenterDisplay::dismiss() {
    report("screen", "Privacy center left, the choices are saved", center_->choices());
    center_->controller().viewWillDisappear(true);
    surface_.reset();
    center_.reset();
    reported_.clear();
    closed_ = false;
}

std::string CenterDisplay::dispatch(std::string_view event) {
    std::string patch = surface_->dispatch(event);
    for (const std::string& address : std::exchange(opened_, {}))
        report("screen", (web::mayOpen(address) ? "Opens " : "Does not open ") + address);
    if (closed_)
        dismiss();
    else
        reportTapsIn(center_->controller().view());
    return patch;
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

// As the user of the controls hears of their taps: after the center did what they ask for.
void CenterDisplay::reportTapsIn(const std::shared_ptr<View>& view) {
    if (reported_.insert(view).second)
        visit(*view, Overloaded{[this](Switch& control) { reportSwitching(control); },
                                [](Button& button) { reportTapOf(button); }, [](View&) {}});
    for (const auto& subview : view->subviews())
        reportTapsIn(subview);
}

void CenterDisplay::reportSwitching(Switch& control) {
    control.addTouchUpInside([this, &control] {
        report("screen", rowOf(control) + (control.on() ? " switched on" : " switched off"),
               center_->choices());
    });
}

} // namespace vx::tools::studio
