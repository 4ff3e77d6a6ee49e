#include "vxprivacy/platform/ui/Touch.h"

#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx {

void touch(View& view) {
    visit(view, Overloaded{[](Switch& control) {
                               if (!control.takesTouches())
                                   return; // who would know of the new state?
                               control.setOn(!control.on());
                               control.sendTouchUpInside();
                           },
                           [](const Button& button) {
                               if (button.enabled())
                                   button.sendTouchUpInside();
                           },
                           [](const View& other) { other.tap(0); }});
}

} // namespace vx
