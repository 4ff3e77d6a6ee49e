#pragma once

#include "vxprivacy/hosts/web/StaticFiles.h"

namespace vx::web {

/// What an application puts into its own web views.
StaticFiles webViewFiles();

} // namespace vx::web
