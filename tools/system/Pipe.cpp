#include "tools/system/Pipe.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace vx::tools::system {

Pipe::Pipe() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    read = Descriptor(ends[0]);
    write = Descriptor(ends[1]);
}

} // namespace vx::tools::system
