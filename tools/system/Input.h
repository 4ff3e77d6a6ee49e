#pragma once

#include <cstddef>
#include <fstream>
#include <istream>
#include <optional>
#include <string>

namespace vx::tools::system {

/// What a command line names to be read: a file, or standard input where the name is "-".
class Input {
public:
    /// Says on standard error that it waits, where standard input is a terminal.
    explicit Input(const std::string& name);

    /// For messages: the file's name or "standard input".
    const std::string& title() const { return title_; }
    /// Fails at once when the file cannot be opened.
    std::istream& stream() { return stream_; }
    /// All of it; of what is longer than `most` bytes, more than `most`. Nothing when it cannot be
    /// read.
    std::optional<std::string> read(std::size_t most);

private:
    std::string title_;
    std::ifstream file_;
    std::istream& stream_;
};

} // namespace vx::tools::system
