#pragma once

#include <optional>
#include <string>

namespace vx::tools::system {

/// Cuts what comes out of a descriptor into lines.
class LineReader {
public:
    explicit LineReader(int fd) : fd_(fd) {}

    /// Reads what is there; waits when nothing is.
    void read();
    /// The next whole line, without its end; nothing when it is still to come.
    std::optional<std::string> next();
    /// Whether the other end was closed.
    bool ended() const { return ended_; }

private:
    int fd_;
    std::string text_;
    bool ended_ = false;
};

} // namespace vx::tools::system
