#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// The core library's conversions of numbers that travel as text.
class VXPRIVACY_EXPORT VXUtils {
public:
    /// The number that the whole of `text` is, in decimal, without its fraction; absent when it is
    /// none.
    static std::optional<std::int64_t> nsNumberFromString(std::string_view text);
    /// The integer that `text` begins with; 0 when there is none, the nearest where it is too
    /// large.
    static std::int32_t numberFromNSString(std::string_view text);
};

} // namespace vx
