#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// The hash of a map from texts that is searched by `std::string_view`, without making a string:
///
///     std::unordered_map<std::string, Value, TextHash, std::equal_to<>> map;
///     map.find(std::string_view("key"));
struct VXPRIVACY_EXPORT TextHash {
    /// Says to the map that it may search without a `std::string`.
    using is_transparent = void;

    /// The same for equal texts, in this process; any thread.
    // Not noexcept: a map of libstdc++ then keeps each key's hash, and compares fewer texts.
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>{}(text);
    }
};

} // namespace vx
