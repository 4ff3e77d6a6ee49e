#include "vxprivacy/services/core/WriteAheadLog.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <optional>
#include <thread>

namespace vx::services {

namespace {

constexpr std::size_t kHeaderSize = 32;
constexpr std::uint32_t kMagic = 0x377f0682; // the last bit says how checksums read their words
constexpr std::uint32_t kFormat = 3007000;
constexpr std::chrono::milliseconds kSecondLook(5);

using Header = std::array<unsigned char, kHeaderSize>;

// Absent where the log is shorter: SQLite has not begun it.
std::optional<Header> headerOf(const std::filesystem::path& file) {
    Header header{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char*>(header.data()), kHeaderSize);
    return stream ? std::optional(header) : std::nullopt;
}

std::uint32_t word(const Header& header, std::size_t number, bool bigEndian = true) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | header[4 * number + (bigEndian ? i : 3 - i)];
    return value;
}

bool isSound(const Header& header) {
    const std::uint32_t magic = word(header, 0);
    if ((magic & ~1U) != kMagic || word(header, 1) != kFormat)
        return false;
    const bool bigEndian = (magic & 1) != 0;
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    for (std::size_t i = 0; i < 6; i += 2) {
        first += word(header, i, bigEndian) + second;
        second += word(header, i + 1, bigEndian) + first;
    }
    return first == word(header, 6) && second == word(header, 7);
}

bool isEmpty(const Header& header) {
    return std::ranges::all_of(header, [](unsigned char byte) { return byte == 0; });
}

} // namespace

// Twice, for another process may be writing it.
bool isGarbageLog(const std::filesystem::path& file) {
    const auto looksWrong = [&] {
        const auto header = headerOf(file);
        return header && !isEmpty(*header) && !isSound(*header);
    };
    if (!looksWrong())
        return false;
    std::this_thread::sleep_for(kSecondLook);
    return looksWrong();
}

} // namespace vx::services
