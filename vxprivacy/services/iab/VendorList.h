#pragma once

#include <cstdint>
#include <vector>

#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/services/iab/IdentifierSet.h"

namespace vx::services::tcf {

/// Purposes as bits: purpose n, from 1 to 24, is bit n - 1.
using Purposes = std::uint32_t;

/// 0 for a number that is none of them.
constexpr Purposes purposeBit(std::uint32_t purpose) {
    return purpose >= 1 && purpose <= 24 ? Purposes{1} << (purpose - 1) : 0;
}

/// No vendor may claim a legitimate interest in these: 1 must be declared for consent ("Publisher
/// Restrictions Section", note), and 3 to 6 may since version 2.2 ("Why was support for legitimate
/// interest for purposes 3 to 6 deprecated?"), both in "Consent string and vendor list formats".
inline constexpr Purposes kConsentOnly =
    purposeBit(1) | purposeBit(3) | purposeBit(4) | purposeBit(5) | purposeBit(6);

/// What a vendor of the list declares, of purposes that the list has.
struct ListedVendor {
    std::uint32_t id = 0;
    Purposes consent = 0;
    Purposes legitimateInterest = 0;
    Purposes flexible = 0;
    bool hasSpecialPurposes = false;

    bool hasSpecialPurposesOnly() const {
        return hasSpecialPurposes && consent == 0 && legitimateInterest == 0;
    }
};

/// What a TC string is made and checked by of a Global Vendor List ("The Global Vendor List" in
/// "Consent string and vendor list formats").
struct VendorList {
    /// From the list's document. What it lacks, or what no field of a TC string can hold, is 0 or
    /// left out; of two vendors with one ID the second is.
    static VendorList of(const JSONValue& document);

    std::uint32_t format = 0;
    std::uint32_t version = 0;
    std::uint32_t policyVersion = 0;
    IdentifierSet purposes{};
    IdentifierSet specialFeatures{};
    std::vector<ListedVendor> vendors{}; ///< not deleted, in the list's order
    IdentifierSet live{};                ///< the same
    IdentifierSet deleted{};
};

} // namespace vx::services::tcf
