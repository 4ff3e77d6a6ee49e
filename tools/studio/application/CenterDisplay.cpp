// Shows the privacy center as a page, and reports taps, addresses and choices.

#include "tools/studio/application/CenterDisplay.h"

#include <algorithm>
#include <utility>

#include "tools/studio/application/StudioReport.h"
#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/hosts/web/Addresses.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::tools::studio {

namespace {

constexpr double kHeightOfWidth = 844.0 / 390; // as a phone's display

// The label beside a switch.
std::string titleOf(const Switch& control) {
    for (const auto& view : control.superview()->subviews())
        if (const auto* label = viewAs<Label>(*view))
            return label->text();
    return {};
}

void reportTapOf(Button& button) {
    button.addTouchUpInside([&button] { report("screen", button.title() + " tapped"); });
}

} // namespace

void CenterDisplay::present(double width) {
    report("screen", "Privacy center opened");
    center_ = std::make_unique<VXPrivacyCenterViewController>();
    center_->view()->setSize(width, width * kHeightOfWidth);
    center_->viewDidLoad();
    center_->viewDidAppear(true);
    reportTaps();
    surface_ = std::make_unique<web::WebSurface>(center_->view(),
                                                 web::PageSettings{.surfaceJS = "center.js"});
    ++number_;
}

void CenterDisplay::dismiss() {
    report("screen", "Privacy center left, the choices are saved", choices());
    center_->viewWillDisappear(true);
    surface_.reset();
    center_.reset();
}

std::string CenterDisplay::dispatch(std::string_view event) {
    std::string patch = surface_->dispatch(event);
    for (const std::string& address : std::exchange(opened_, {}))
        report("screen", (web::mayOpen(address) ? "Opens " : "Does not open ") + address);
    return patch;
}

Json CenterDisplay::state() const {
    if (!shows())
        return {};
    const auto text = center_->getSaveButtonText();
    return {{"number", number_},
            {"revision", surface_->revision()},
            {"saveButton", text ? Json(*text) : Json()}};
}

// The patch under way carries it; what was tapped is reported before where that leads.
void CenterDisplay::openURL(std::string_view address) {
    surface_->open(address);
    opened_.emplace_back(address);
}

// As the user of the controls hears of their taps: after the center did what they ask for.
void CenterDisplay::reportTaps() {
    for (const auto& [name, view] : center_->viewsDictionary())
        visit(*view, Overloaded{[this](Switch& control) { reportSwitching(control); },
                                [](Button& button) { reportTapOf(button); }, [](View&) {}});
}

void CenterDisplay::reportSwitching(Switch& control) {
    control.addTouchUpInside([this, &control] {
        report("screen", titleOf(control) + (control.on() ? " switched on" : " switched off"),
               choices());
    });
}

// What leaving now would save.
Json CenterDisplay::choices() const {
    Json choices = Json::object();
    for (const auto& [name, view] : center_->viewsDictionary())
        if (const auto* control = viewAs<Switch>(*view); control && control->tag() != 0)
            choices[numberedKey(kVXCategoryPrefix, control->tag())] = consentValue(control->on());
    return choices;
}

} // namespace vx::tools::studio
