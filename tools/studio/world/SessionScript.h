#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "tools/studio/shared/EventStream.h"

namespace vx::tools::studio {

/// What was done to an application from a process's start to its end.
struct SessionChapter {
    /// A step of `vxprivacy play`, or a comment for what is none.
    struct Step {
        std::uint64_t after = 0; ///< the last entry of the timeline before it
        std::string line;
    };

    std::uint64_t number = 0; ///< 1, 2, ...
    std::uint64_t after = 0;  ///< as of a step
    /// What the process began with is what the one before it left.
    bool isContinued = false;
    std::uint64_t now = 0; ///< milliseconds since 1970, by the application's clock
    /// What the process began with, as a step, but for the identifier.
    std::string world;
    std::string sdkIdentifier; ///< empty where none is known
    std::vector<Step> steps;
    std::size_t bytes = 0; ///< of all that
};

/// The session from launch `first` on, for `vxprivacy play`. What the timeline has and play has no
/// line for stands between the steps as comments.
std::string sessionScript(const std::deque<SessionChapter>& chapters, std::uint64_t first,
                          const EventStream::Entries& timeline);

} // namespace vx::tools::studio
