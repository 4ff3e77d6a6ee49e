#include "tools/system/LineReader.h"

#include <cerrno>

#include <unistd.h>

namespace vx::tools::system {

void LineReader::read() {
    char block[16384];
    const ssize_t count = ::read(fd_, block, sizeof block);
    if (count > 0)
        text_.append(block, static_cast<std::size_t>(count));
    else if (count == 0 || errno != EINTR)
        ended_ = true;
}

std::optional<std::string> LineReader::next() {
    const std::size_t end = text_.find('\n');
    if (end == std::string::npos)
        return {};
    std::string line = text_.substr(0, end);
    text_.erase(0, end + 1);
    return line;
}

} // namespace vx::tools::system
