#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "vxprivacy/services/iab/IdentifierSet.h"

namespace vx::services::tcf {

/// The vendors of one section. A bit field of them is `maxVendorId` bits long.
struct VendorSection {
    std::uint32_t maxVendorId = 0; ///< no vendor is greater
    IdentifierSet vendors{};

    friend bool operator==(const VendorSection&, const VendorSection&) = default;
};

/// A digit for each vendor of the section.
inline std::string digits(const VendorSection& section) {
    return digits(section.vendors, section.maxVendorId);
}

/// What a publisher lays down for a purpose.
struct Restriction {
    enum Type : std::uint8_t { NotAllowed = 0, RequireConsent = 1, RequireLegitimateInterest = 2 };

    std::uint32_t purpose = 0; ///< 1 to 63
    Type type = NotAllowed;

    friend auto operator<=>(const Restriction&, const Restriction&) = default;
};

/// The vendors that each restriction is laid upon; at least one each.
using Restrictions = std::map<Restriction, IdentifierSet>;

/// The segment of the publisher's own purposes.
struct PublisherTC {
    IdentifierSet purposesConsent{}; ///< purposes 1 to 24
    IdentifierSet purposesLITransparency{};
    std::uint32_t customPurposes = 0; ///< how many there are, at most 63
    IdentifierSet customPurposesConsent{};
    IdentifierSet customPurposesLITransparency{};

    friend bool operator==(const PublisherTC&, const PublisherTC&) = default;
};

/// The fields of a TC string of version 2, named after the IAB's. The widths of the fields, which
/// no value exceeds, are in Layout.h.
struct TCModel {
    std::uint64_t created = 0; ///< tenths of a second since 1970
    std::uint64_t lastUpdated = 0;
    std::uint32_t cmpId = 0;
    std::uint32_t cmpVersion = 0;
    std::uint32_t consentScreen = 0;
    std::string consentLanguage = "AA"; ///< two letters, upper case
    std::uint32_t vendorListVersion = 0;
    std::uint32_t tcfPolicyVersion = 0;
    bool isServiceSpecific = false;
    bool useNonStandardStacks = false;
    IdentifierSet specialFeatureOptIns{}; ///< special features 1 to 12
    IdentifierSet purposesConsent{};      ///< purposes 1 to 24
    IdentifierSet purposesLITransparency{};
    bool purposeOneTreatment = false;
    std::string publisherCC = "AA"; ///< two letters, upper case; AA: unknown
    VendorSection vendorConsent{};
    VendorSection vendorLegitimateInterest{};
    Restrictions publisherRestrictions{};

    // The other segments, where there are some.
    std::optional<VendorSection> disclosedVendors{};
    std::optional<VendorSection> allowedVendors{};
    std::optional<PublisherTC> publisherTC{};

    friend bool operator==(const TCModel&, const TCModel&) = default;
};

} // namespace vx::services::tcf
