#include "vxprivacy/platform/ui/Controls.h"

namespace vx {

void Control::sendTouchUpInside() const {
    for (const auto& action : actions_)
        action();
}

void touch(View& view) {
    if (view.kind() == View::Kind::Switch) {
        auto& control = static_cast<Switch&>(view);
        control.setOn(!control.on());
        control.sendTouchUpInside();
    } else if (view.kind() == View::Kind::Button) {
        const auto& button = static_cast<const Button&>(view);
        if (button.enabled())
            button.sendTouchUpInside();
    } else {
        view.tap(0);
    }
}

} // namespace vx
