#pragma once

#include <string>

#include "tools/studio/Json.h"

namespace vx::tools::studio {

/// Whether the user must be asked and why: "mustAsk", "reason" ("first-start", "expired", "reset",
/// "changed", "earlier" or "none"), "text" that says it, "state" in words, "savedAt" and
/// "validUntil" (milliseconds since 1970; 0: never saved). The store keeps that the user must be
/// asked but not why, so `cause` is what the engine last told: "expired", "changed" or unknown.
Json decision(const std::string& cause);

} // namespace vx::tools::studio
