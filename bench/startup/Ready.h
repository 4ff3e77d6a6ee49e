#pragma once

namespace vx::bench {

/// Tells the parent process that this one is ready: the time, and the most memory it had so far.
void reportReady();

} // namespace vx::bench
