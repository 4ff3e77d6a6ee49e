#pragma once

#include <string>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// Whether the user must be asked and why: "mustAsk", "reason" ("first-start", "expired",
/// "was-expired", "reset", "changed", "earlier" or "none"), "text" that says it in a line,
/// "headline" and "explanation" that say it on a page (empty with "none"), "state" in words,
/// "savedAt" and "validUntil" (milliseconds since 1970; 0: never saved). The store keeps that the
/// user must be asked but not why, so `cause` is what the engine last told, "expired" or "changed",
/// or the reason of an earlier process.
Json decision(const std::string& cause);

} // namespace vx::tools::studio
