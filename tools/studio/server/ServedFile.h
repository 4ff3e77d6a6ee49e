#pragma once

#include <string>

#include <httplib.h>

#include "vxprivacy/hosts/web/StaticFiles.h"

namespace vx::tools::studio {

/// Makes `server` answer GET requests for `path` with the file.
void serveFile(httplib::Server& server, const std::string& path, const web::StaticFile& file);

} // namespace vx::tools::studio
