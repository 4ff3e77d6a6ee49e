#pragma once

#include <filesystem>

namespace vx::services {

/// Whether `file`, SQLite's write-ahead log, is there and begins with something that SQLite did not
/// write. SQLite would take such a log for an empty one, and what was saved last would be lost
/// without a word. (https://sqlite.org/fileformat2.html, section 4.1)
bool isGarbageLog(const std::filesystem::path& file);

} // namespace vx::services
