#pragma once

#include <string_view>

namespace vx::tools::gvl {

/// samples/gvl/vendor-list.json
extern const std::string_view kSampleText;

} // namespace vx::tools::gvl
