#pragma once

#include "tools/system/Descriptor.h"

namespace vx::tools::system {

/// Both ends of a pipe; a child process gets neither of them unless it is handed one.
struct Pipe {
    Descriptor read;
    Descriptor write;

    /// Throws std::system_error when there is none to be had.
    Pipe();
};

} // namespace vx::tools::system
