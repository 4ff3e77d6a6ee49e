#pragma once

#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx::web {

/// Whether an address from a document may be opened: a URL of the scheme http, https or mailto. One
/// that names a user, a password or no host that a browser can make out may not.
/// An application asks this in its `Application::openURL`.
VXPRIVACY_EXPORT bool mayOpen(std::string_view address);

} // namespace vx::web
