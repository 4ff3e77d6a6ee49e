#pragma once

namespace vx::bench {

/// How many times this process asked the system to bring a file to the disk. The executable puts
/// its own fsync and fdatasync before the C library's, so that SQLite's calls are counted.
int syncCount();

} // namespace vx::bench
