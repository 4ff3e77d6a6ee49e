#pragma once

#include <string>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// Writes one line to the studio. Lines after the studio is gone are lost.
void report(const Json& line);
/// An entry of the timeline.
void report(const char* kind, const std::string& title, Json body = nullptr);

} // namespace vx::tools::studio
