#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

// Places in UTF-8 text, counted in Unicode code points from 0, as taps and links have them. None of
// this fails: a byte that belongs to no code point counts as one. Any thread.

namespace vx {

/// A piece of a text.
struct VXPRIVACY_EXPORT CodePointRange {
    std::size_t start = 0;  ///< the first code point
    std::size_t length = 0; ///< code points

    /// Whether the code point `place` lies in the piece.
    bool contains(std::size_t place) const { return start <= place && place - start < length; }
    friend bool operator==(const CodePointRange&, const CodePointRange&) = default;
};

/// The number of bytes of `text` before its code point `place`; all where it has fewer.
///
///     byteOffset("né à", 2);   // 3
VXPRIVACY_EXPORT std::size_t byteOffset(std::string_view text, std::size_t place);

/// Where `part` first stands in `text`, letters compared as lower-case ones; nothing where it does
/// not, or is empty. Knows the letters of Latin, Greek, Cyrillic and Armenian; each stays one code
/// point, and both Greek sigmas are the same.
///
///     rangeIgnoringCase("Unsere PARTNER", "unsere partner");   // {0, 14}
VXPRIVACY_EXPORT std::optional<CodePointRange> rangeIgnoringCase(std::string_view text,
                                                                 std::string_view part);

} // namespace vx
