#include "tools/system/Files.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <system_error>

#include <unistd.h>

#include "tools/system/Descriptor.h"

namespace vx::tools::system {

namespace {

[[noreturn]] void fail(const std::filesystem::path& file) {
    throw std::system_error(errno, std::generic_category(), file.string());
}

} // namespace

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::optional<std::string> text = readAll(stream, std::numeric_limits<std::size_t>::max());
    if (!text)
        fail(file);
    return *std::move(text);
}

void writeFile(const std::filesystem::path& file, std::string_view text) {
    std::string draft = file.string() + ".XXXXXX";
    const Descriptor descriptor(::mkstemp(draft.data()));
    if (descriptor.get() < 0)
        fail(file);
    if (writeAll(descriptor.get(), text) && ::fsync(descriptor.get()) == 0 &&
        ::rename(draft.c_str(), file.c_str()) == 0)
        return;
    const int error = errno;
    ::unlink(draft.c_str());
    throw std::system_error(error, std::generic_category(), file.string());
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
