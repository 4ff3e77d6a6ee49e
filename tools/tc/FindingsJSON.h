#pragma once

#include <vector>

#include <nlohmann/json.hpp>

#include "tools/tc/Check.h"

namespace vx::tools::tc {

/// An array of objects with "rule", "field", "bits" ([first, last], where there are some), "what"
/// and "source".
nlohmann::ordered_json asJSON(const std::vector<Finding>& findings);

} // namespace vx::tools::tc
