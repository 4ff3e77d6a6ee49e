#include "vxprivacy/platform/ui/Controls.h"

namespace vx {

// An action may make the control forget them all, and may be the end of who holds it.
void Control::sendTouchUpInside() const {
    const auto kept = weak_from_this().lock();
    for (std::size_t i = 0; i < actions_.size(); ++i) {
        const auto action = actions_[i];
        action();
    }
}

void Control::forgetActions() {
    actions_.clear();
    View::forgetActions();
}

} // namespace vx
