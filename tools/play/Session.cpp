#include "tools/play/Session.h"

#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXPopUpContentView.h"

namespace vx::tools::play {

void Session::present(std::unique_ptr<ViewController> center, Presentation how) {
    center_ = std::move(center);
    center_->setDelegate(this);
    if (how == Presentation::Modal)
        application_.presentViewController(*center_);
    else
        navigation_.pushViewController(*center_);
    center_->view()->setSize(frame_.width, frame_.height);
    center_->viewDidLoad();
    applyMeasures();
    center_->viewDidAppear(false);
}

void Session::dismiss() {
    if (center_)
        center_->viewWillDisappear(false);
    center_.reset();
}

void Session::measure(const Measures& measures) {
    measures_ = measures;
    applyMeasures();
}

void Session::applyMeasures() const {
    if (const auto* iab = center<VXIABPrivacyCenterViewController>())
        iab->popupContentView()->scrollView()->setMeasures(measures_.frameHeight,
                                                           measures_.contentHeight);
}

void Session::viewControllerDismissed(ViewController&, bool) {
    print({{"closed", "modal"}});
    dismiss();
}

void Session::viewControllerPopped(ViewController&, bool) {
    print({{"closed", "push"}});
    dismiss();
}

const Action& actionNamed(const std::string& name) {
    for (const auto& actions :
         {worldActions(), engineActions(), centerActions(), questions(), documentQuestions()})
        for (const Action& action : actions)
            if (action.name == name)
                return action;
    throw StepError("unknown step: " + name);
}

} // namespace vx::tools::play
