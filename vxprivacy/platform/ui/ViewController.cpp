#include "vxprivacy/platform/ui/ViewController.h"

namespace vx {

ViewController::~ViewController() = default;

void ViewController::viewDidLoad() {}

void ViewController::viewDidAppear(bool) {}

void ViewController::viewWillDisappear(bool) {}

void ViewController::didReceiveMemoryWarning() {}

} // namespace vx
