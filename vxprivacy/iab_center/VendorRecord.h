#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "vxprivacy/platform/foundation/JSONValue.h"

namespace vx {

/// What the vendor list says of a vendor, as far as screens tell it.
struct VendorRecord {
    /// From an entry of the list; what the entry lacks is 0, absent or empty.
    static VendorRecord of(const JSONValue& entry);

    /// Whether the vendor asks for anything that a user may refuse.
    bool hasChoice() const { return !purposes.empty() || !legIntPurposes.empty(); }

    std::int32_t vendorID = 0;
    std::optional<std::string> privacyPolicy; ///< an address, not to be trusted
    std::vector<std::int32_t> purposes;
    std::vector<std::int32_t> legIntPurposes;
    std::vector<std::int32_t> specialPurposes;
    std::vector<std::int32_t> features;
    std::vector<std::int32_t> specialFeatures;
};

} // namespace vx
