#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace vx::tools {

/// What a command calls the input "-".
inline constexpr const char* kStandardInput = "standard input";

/// All of a file, or of standard input where `name` is "-"; of what is longer than `most` bytes,
/// `most` + 1 bytes. Nothing when it cannot be read.
std::optional<std::string> readInput(const std::string& name, std::size_t most);

} // namespace vx::tools
