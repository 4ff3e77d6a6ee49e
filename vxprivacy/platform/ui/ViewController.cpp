#include "vxprivacy/platform/ui/ViewController.h"

namespace vx {

ViewController::~ViewController() {
    view_->forgetActions(); // which call the controller
}

void ViewController::viewDidLoad() {}

void ViewController::viewDidAppear(bool) {}

void ViewController::viewWillDisappear(bool) {}

void ViewController::didReceiveMemoryWarning() {}

} // namespace vx
