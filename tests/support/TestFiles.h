#pragma once

#include <filesystem>
#include <string_view>

namespace vx::tests {

/// A directory of its own, gone with the object.
class TemporaryDirectory {
public:
    /// Throws std::system_error when it cannot be made.
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

/// Makes `file` hold `text` and nothing else; returns `file`. Throws std::system_error when it
/// cannot.
std::filesystem::path writeFile(const std::filesystem::path& file, std::string_view text);

} // namespace vx::tests
