#pragma once

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx {

class Switch;

/// What the platform does when the user touches `view`: a switch turns over and calls its actions,
/// a button that is enabled calls its actions, any other view that takes taps is tapped at its
/// first character. A view whose controller is gone does nothing. The way of hosts and tests; a
/// screen never calls it.
VXPRIVACY_EXPORT void touch(View& view);

/// The same for a user who saw the switch and wants it to stand like that: it is set, and calls its
/// actions also when it stood so already, for what it carries may stand otherwise.
VXPRIVACY_EXPORT void touch(Switch& control, bool wanted);

} // namespace vx
