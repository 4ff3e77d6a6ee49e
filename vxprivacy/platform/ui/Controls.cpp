#include "vxprivacy/platform/ui/Controls.h"

namespace vx {

void Control::sendTouchUpInside() const {
    for (const auto& action : actions_)
        action();
}

} // namespace vx
