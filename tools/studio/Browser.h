#pragma once

#include <string>

namespace vx::tools::studio {

/// Shows `address` in the user's browser, where there is a desktop to show it on.
void openBrowser(const std::string& address);

} // namespace vx::tools::studio
