#pragma once

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace vx::tools::system {

/// All of a file. Throws std::system_error when it cannot be read.
std::string readFile(const std::filesystem::path& file);

/// Makes `file` hold `text`: all of it, or what it held before. Only this user may read a file made
/// so; a link gives way to it and is not followed. Throws std::system_error when it cannot.
void writeFile(const std::filesystem::path& file, std::string_view text);

/// What is left in `stream`; of what is longer than `most` bytes, more than `most`. Nothing when it
/// cannot be read.
std::optional<std::string> readAll(std::istream& stream, std::size_t most);

/// Writes all of `text`, waiting as long as the other end takes; false when it takes no more.
bool writeAll(int fd, std::string_view text);

} // namespace vx::tools::system
