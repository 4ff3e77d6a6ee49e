#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace vx::tools::studio {

/// A new directory, which goes with its content.
class ScratchDirectory {
public:
    /// Throws std::system_error when it cannot be made.
    ScratchDirectory() {
        std::error_code error;
        std::string name =
            (std::filesystem::temp_directory_path(error) / "vxprivacy-XXXXXX").string();
        if (!error && !::mkdtemp(name.data()))
            error.assign(errno, std::generic_category());
        if (error)
            throw std::system_error(error, "a temporary directory cannot be made");
        path_ = name;
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace vx::tools::studio
