#include "tools/system/Files.h"

#include <cerrno>
#include <fstream>
#include <limits>
#include <system_error>

#include <unistd.h>

namespace vx::tools::system {

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::optional<std::string> text = readAll(stream, std::numeric_limits<std::size_t>::max());
    if (!text)
        throw std::system_error(errno, std::generic_category(), file.string());
    return *std::move(text);
}

std::optional<std::string> readAll(std::istream& stream, std::size_t most) {
    std::string text;
    char block[16384];
    while (stream && text.size() <= most) {
        stream.read(block, sizeof block);
        text.append(block, static_cast<std::size_t>(stream.gcount()));
    }
    const bool readToTheEnd = stream.eof();
    return readToTheEnd || text.size() > most ? std::optional(std::move(text)) : std::nullopt;
}

bool writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(fd, text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return false;
        text.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

} // namespace vx::tools::system
