#pragma once

#include "vxprivacy/hosts/web/StaticFiles.h"

namespace vx::tools::lint {

/// The schema that documents the format is the one that is checked:
/// docs/privacy-configuration.schema.json.
web::StaticFiles schemaFiles();

} // namespace vx::tools::lint
