#pragma once

#include <nlohmann/json.hpp>

namespace vx::tools::studio {

/// JSON whose members keep their order, as everything that is shown does.
using Json = nlohmann::ordered_json;

} // namespace vx::tools::studio
