#include "tools/play/Session.h"

namespace vx::tools::play {

void Session::present(std::unique_ptr<ViewController> center) {
    center_ = std::move(center);
    center_->view()->setSize(frame_.width, frame_.height);
    center_->viewDidLoad();
    center_->viewDidAppear(false);
}

void Session::dismiss() {
    if (center_)
        center_->viewWillDisappear(false);
    center_.reset();
}

} // namespace vx::tools::play
