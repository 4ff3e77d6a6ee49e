#pragma once

#include <string_view>

namespace vx {

// Entries of the user information with which a changed configuration asks the engine for something.
// Their presence is what counts; the value is "yes". Without either, only the categories changed.

/// Saved consent must be forgotten and the privacy center be shown again.
inline constexpr std::string_view kVXUserInfo_ResetSave = "resetSave";
/// The configuration changed significantly: the privacy center must be shown again, and the
/// application is told. Saved consent stays in force. Without a callback neither happens,
/// deliberately.
inline constexpr std::string_view kVXUserInfo_SignificantChanges = "significantChanges";

} // namespace vx
