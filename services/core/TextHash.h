#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace vx::services {

/// Lets a hash map of texts be searched by a view, without making a string.
struct TextHash {
    using is_transparent = void;

    // Not noexcept: a map of libstdc++ then keeps each key's hash, and compares fewer texts.
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>{}(text);
    }
};

} // namespace vx::services
