#pragma once

#include "tools/studio/Json.h"

namespace vx::tools::studio {

/// Whether the user must be asked and why, from the store and the engine as they are:
/// "mustAsk", "reason" ("first-start", "expired", "reset", "changed" or "none"), "text" that says
/// it, "state" in words, "savedAt" and "validUntil" (milliseconds since 1970; 0: never saved).
Json decision();

} // namespace vx::tools::studio
