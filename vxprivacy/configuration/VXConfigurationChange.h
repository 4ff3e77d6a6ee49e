#pragma once

#include <string_view>

namespace vx {

// Entries of the user information with which a changed configuration asks for something. Their
// presence is what counts.
/// Saved consent must be reset.
inline constexpr std::string_view kVXUserInfo_ResetSave = "resetSave";
/// The configuration changed significantly.
inline constexpr std::string_view kVXUserInfo_SignificantChanges = "significantChanges";

} // namespace vx
