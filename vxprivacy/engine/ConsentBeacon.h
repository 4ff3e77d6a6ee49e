#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/engine/EngineState.h"

namespace vx {

/// Actions of a beacon: a privacy center was shown, consent was saved. Any other number is a save.
inline constexpr std::int32_t kBeaconView = 1;
inline constexpr std::int32_t kBeaconSave = 2;

/// The accepted ones of the saved list `list`, their prefix left out, joined with commas: "1,2".
/// Empty when none is.
std::string addToHit(std::string_view list);

/// Whom a beacon names: what the state's `userID` names, else itself; without one the installation.
/// Absent when that has no identifier.
std::optional<std::string> resolveUserID(const EngineState& state);

/// Sends the consent beacon, one small JSON object, by the notification
/// `kVXNotification_HTTPRequest`. Returns when the sender has taken it, which is not when it is
/// posted; no answer is awaited.
///
/// It names site, privacy identifier, version of the configuration (0 without one), `type`, user
/// and user agent; what is absent prints as "(null)". A save also carries the global consent and
/// the accepted entries that are stored at this moment. Values are put in as they are,
/// deliberately: one with a quote breaks the JSON.
void sendConsentHitToVX(const EngineState& state, std::int32_t action, std::string_view type);

} // namespace vx
