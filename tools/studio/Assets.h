#pragma once

#include <string>
#include <string_view>

namespace vx::tools::studio {

/// The content of a file that was embedded into the executable ("index.html", "category.json");
/// empty when there is none of that name.
std::string asset(std::string_view name);

} // namespace vx::tools::studio
