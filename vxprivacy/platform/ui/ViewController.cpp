#include "vxprivacy/platform/ui/ViewController.h"

#include <utility>

namespace vx {

ViewControllerDelegate::~ViewControllerDelegate() = default;

ViewController::~ViewController() {
    view_->forgetActions(); // which call the controller
    if (presenting_)
        presenting_->presented_ = nullptr;
    if (presented_)
        presented_->presenting_ = nullptr;
    if (navigation_)
        std::erase(navigation_->stack_, this);
}

void ViewController::viewDidLoad() {}

void ViewController::viewDidAppear(bool) {}

void ViewController::viewWillDisappear(bool) {}

void ViewController::didReceiveMemoryWarning() {}

bool ViewController::prefersStatusBarHidden() const {
    return false;
}

void ViewController::presentViewController(ViewController& other) {
    presented_ = &other;
    other.presenting_ = this;
}

ViewController* ViewController::presentingViewController() const {
    return !presenting_ && navigation_ ? navigation_->presentingViewController() : presenting_;
}

void ViewController::dismissViewController(bool animated) {
    ViewController* presenter = presentingViewController();
    if (!presenter)
        return;
    std::exchange(presenter->presented_, nullptr)->presenting_ = nullptr;
    if (delegate_)
        delegate_->viewControllerDismissed(*this, animated);
}

NavigationController::~NavigationController() {
    for (ViewController* each : stack_)
        each->navigation_ = nullptr;
}

void NavigationController::pushViewController(ViewController& controller) {
    controller.navigation_ = this;
    stack_.push_back(&controller);
}

void NavigationController::popViewController(bool animated) {
    if (stack_.size() < 2)
        return;
    ViewController& popped = *stack_.back();
    stack_.pop_back();
    popped.navigation_ = nullptr;
    if (popped.delegate_)
        popped.delegate_->viewControllerPopped(popped, animated);
}

} // namespace vx
