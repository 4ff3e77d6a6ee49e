#pragma once

#include <cstddef>

namespace vx::bench {

/// How many pieces this process has asked the allocator for so far. The executable counts in its
/// own `operator new`.
std::size_t allocationCount();

/// Bytes in use now, as the C library counts them.
std::size_t bytesInUse();

/// The allocator leaves small pieces of what is gone as they are until it is asked for a large one.
/// This joins them, which is no part of the time of what comes next.
void tidyUpHeap();

} // namespace vx::bench
