#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace vx::tools::tc {

inline constexpr int kNotWellFormed = 1;

/// Ends the command with a line on standard error.
[[noreturn]] void fail(const std::string& why, int status);
/// All of the file, or of standard input where the name is "-"; ends the command where it cannot be
/// read.
std::string readInput(const std::string& name, std::size_t most);
/// The string that the command line has itself, or standard input where it is "-".
std::string stringOf(const std::string& argument);
/// Calls `action` for each line. Where it says no for any of them the command ends with status 1.
void forEachLine(const std::string& name, const std::function<bool(const std::string&)>& action);

} // namespace vx::tools::tc
