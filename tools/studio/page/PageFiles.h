#pragma once

#include "vxprivacy/hosts/web/StaticFiles.h"

namespace vx::tools::studio {

/// The page's files. They are served under their names, index.html as the page itself.
web::StaticFiles pageFiles();

} // namespace vx::tools::studio
