#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace vx::tools::system {

/// What a new process gets as standard input, output and error.
struct StandardStreams {
    int input;
    int output;
    int error;
};

/// Starts `command`, its program first (looked for in PATH when it has no slash), in a process
/// group of its own, with no signal blocked or ignored. Throws std::system_error when it cannot.
pid_t spawn(std::vector<std::string> command, const StandardStreams& streams);

} // namespace vx::tools::system
