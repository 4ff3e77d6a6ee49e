#include "vxprivacy/platform/ui/Touch.h"

#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx {

void touch(View& view) {
    visit(view, Overloaded{[](Switch& control) { touch(control, !control.on()); },
                           [](const Button& button) {
                               if (button.enabled())
                                   button.sendTouchUpInside();
                           },
                           [](const View& other) { other.tap(0); }});
}

void touch(Switch& control, bool wanted) {
    if (!control.takesTouches())
        return; // who would know of the new state?
    control.setOn(wanted);
    control.sendTouchUpInside();
}

} // namespace vx
