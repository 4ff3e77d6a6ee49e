#pragma once

#include <string_view>

namespace vx::tools::lint {

/// docs/privacy-configuration.schema.json, as it was when this was built.
extern const std::string_view kSchemaText;

} // namespace vx::tools::lint
