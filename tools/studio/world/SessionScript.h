#pragma once

#include <deque>
#include <string>

#include "tools/studio/shared/EventStream.h"
#include "tools/studio/world/SessionRecord.h"

namespace vx::tools::studio {

/// A session for `vxprivacy play`. What the timeline has and play has no line for stands between
/// the steps as comments.
std::string sessionScript(const std::deque<SessionRecord::Chapter>& chapters,
                          const EventStream::Entries& timeline);

} // namespace vx::tools::studio
