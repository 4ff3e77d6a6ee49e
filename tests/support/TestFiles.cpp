#include "tests/support/TestFiles.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string>
#include <system_error>

namespace vx::tests {

namespace fs = std::filesystem;

TemporaryDirectory::TemporaryDirectory() {
    std::string name = fs::temp_directory_path() / "vxprivacy-XXXXXX";
    if (!::mkdtemp(name.data()))
        throw std::system_error(errno, std::generic_category(), name);
    path_ = name;
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path writeFile(const fs::path& file, std::string_view text) {
    std::ofstream stream(file, std::ios::binary);
    if (!(stream << text << std::flush))
        throw std::system_error(errno, std::generic_category(), file.string());
    return file;
}

} // namespace vx::tests
