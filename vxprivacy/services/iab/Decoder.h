#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "vxprivacy/services/iab/TCModel.h"

namespace vx::services::tcf {

/// Characters; what is longer is refused. The strings of all vendors together are a hundredth.
inline constexpr std::size_t kLongestString = 1 << 20;

/// Why a text is no TC string.
struct TCError {
    std::string field; ///< segment and field, "Core.VendorConsent.NumEntries"
    std::size_t bit;   ///< of the segment, where the field begins; from 0
    std::string why;   ///< in English
};

/// Where a field stands in its segment.
struct FieldPlace {
    std::string field; ///< segment and field, "Core.VendorConsent"
    std::size_t first; ///< bit, from 0
    std::size_t last;
};

/// The fields of a TC string. Any text is allowed; the time grows with its length, and the memory
/// is bounded. Ranges may overlap; behind the last field of a segment there may be zeros.
///
/// `places`, if given, gets the place of each field that was read.
std::variant<TCModel, TCError> decode(std::string_view text,
                                      std::vector<FieldPlace>* places = nullptr);

} // namespace vx::services::tcf
