// Decoding UTF-8 and simple lower-case letters.

#include "vxprivacy/platform/foundation/CodePoints.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace vx {

namespace {

// How many bytes the code point has that `text`, which is not empty, starts with.
std::size_t lengthOfFirst(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0xC2 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    if (lead > 0xF4 || text.size() < length ||
        !std::ranges::all_of(text.substr(1, length - 1), continues))
        return 1;
    return length;
}

char32_t decoded(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    if (bytes.size() == 1)
        return lead;
    char32_t value = lead & (0xFFU >> (bytes.size() + 1));
    for (const char c : bytes.substr(1))
        value = (value << 6) | (static_cast<unsigned char>(c) & 0x3FU);
    return value;
}

// Capitals in Unicode's order: every `step`th code point from `first` to `last` is one, and its
// small letter stands `distance` after it.
struct Capitals {
    char32_t first, last;
    char32_t step;
    std::int32_t distance;
};

constexpr Capitals kCapitals[] = {
    {U'A', U'Z', 1, 32},     {0xC0, 0xD6, 1, 32},   {0xD8, 0xDE, 1, 32},    {0x100, 0x12E, 2, 1},
    {0x130, 0x130, 1, -199}, // the dotted I becomes i
    {0x132, 0x136, 2, 1},    {0x139, 0x147, 2, 1},  {0x14A, 0x176, 2, 1},   {0x178, 0x178, 1, -121},
    {0x179, 0x17D, 2, 1},    {0x1F8, 0x21E, 2, 1},  {0x222, 0x232, 2, 1},   {0x386, 0x386, 1, 38},
    {0x388, 0x38A, 1, 37},   {0x38C, 0x38C, 1, 64}, {0x38E, 0x38F, 1, 63},  {0x391, 0x3A1, 1, 32},
    {0x3A3, 0x3AB, 1, 32},   {0x3C2, 0x3C2, 1, 1}, // the sigma at a word's end
    {0x400, 0x40F, 1, 80},   {0x410, 0x42F, 1, 32}, {0x460, 0x480, 2, 1},   {0x48A, 0x4BE, 2, 1},
    {0x4D0, 0x52E, 2, 1},    {0x531, 0x556, 1, 48}, {0x1E00, 0x1E94, 2, 1}, {0x1EA0, 0x1EFE, 2, 1},
};

char32_t lowercase(char32_t c) {
    for (const auto& [first, last, step, distance] : kCapitals)
        if (first <= c && c <= last && (c - first) % step == 0)
            return static_cast<char32_t>(static_cast<std::int32_t>(c) + distance);
    return c;
}

std::u32string lowercaseCodePoints(std::string_view text) {
    std::u32string codePoints;
    while (!text.empty()) {
        const std::size_t length = lengthOfFirst(text);
        codePoints += lowercase(decoded(text.substr(0, length)));
        text.remove_prefix(length);
    }
    return codePoints;
}

} // namespace

std::size_t byteOffset(std::string_view text, std::size_t place) {
    std::size_t offset = 0;
    for (; place > 0 && offset < text.size(); --place)
        offset += lengthOfFirst(text.substr(offset));
    return offset;
}

std::optional<CodePointRange> rangeIgnoringCase(std::string_view text, std::string_view part) {
    const std::u32string sought = lowercaseCodePoints(part);
    const std::size_t at = lowercaseCodePoints(text).find(sought);
    if (sought.empty() || at == std::u32string::npos)
        return {};
    return CodePointRange{at, sought.size()};
}

} // namespace vx
