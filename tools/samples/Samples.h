#pragma once

#include "vxprivacy/hosts/web/StaticFiles.h"

namespace vx::tools {

/// The project's sample documents, under their paths in samples/.
web::StaticFiles samples();

} // namespace vx::tools
