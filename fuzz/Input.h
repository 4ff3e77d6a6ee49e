#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

// What the targets share.

namespace vx::fuzz {

inline std::string_view text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// The parts of an input stand between bytes of zero; the last one takes what is left.
template <std::size_t N>
std::array<std::string, N> parts(std::string_view input) {
    std::array<std::string, N> parts;
    for (std::size_t i = 0; i + 1 < N; ++i) {
        const std::size_t end = std::min(input.find('\0'), input.size());
        parts[i] = input.substr(0, end);
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    parts[N - 1] = input;
    return parts;
}

inline void require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace vx::fuzz
