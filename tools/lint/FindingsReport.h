#pragma once

#include <iosfwd>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "tools/lint/Finding.h"

namespace vx::tools::lint {

/// An array of objects, one for each finding, with the members severity ("error" or "warning"),
/// path, line, column, problem, effect and remedy.
nlohmann::ordered_json asJSON(const std::vector<Finding>& findings);

/// Prints two lines for each finding: "NAME:LINE:COLUMN: SEVERITY: PATH: what and what for", and,
/// indented, how to mend it.
void print(const std::vector<Finding>& findings, std::string_view name, std::ostream& output);

} // namespace vx::tools::lint
