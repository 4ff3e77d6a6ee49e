#include "vxprivacy/services/iab/InForceRules.h"

#include <algorithm>
#include <utility>

namespace vx::services::tcf {

namespace {

IdentifierSet common(const IdentifierSet& left, const IdentifierSet& right) {
    IdentifierSet set;
    const std::size_t end = (std::min(left.greatest(), right.greatest()) + 63) / 64;
    for (std::size_t i = end; i-- > 0;)
        set.insertWord(i, left.word(i) & right.word(i));
    return set;
}

IdentifierSet without(Purposes excluded, const IdentifierSet& purposes) {
    IdentifierSet set;
    purposes.forEachRange([&](std::uint32_t first, std::uint32_t last) {
        for (std::uint32_t purpose = first; purpose <= last; ++purpose)
            if (!(excluded & purposeBit(purpose)))
                set.insert(purpose);
    });
    return set;
}

VendorSection sectionOf(IdentifierSet vendors) {
    const std::uint32_t greatest = vendors.greatest();
    return {greatest, std::move(vendors)};
}

} // namespace

bool isInForce(const VendorList& list) {
    return list.format == kListFormat && list.policyVersion >= kLeastPolicyVersion &&
           list.version != 0;
}

// Formats, field RestrictionType: a vendor follows its own declaration where it is flexible, and
// does nothing for the purpose where it is not and the publisher asks for the other legal basis.
Permitted permitted(const ListedVendor& vendor, const Restrictions& restrictions) {
    Permitted left{vendor.consent, vendor.legitimateInterest & ~kConsentOnly};
    for (const auto& [restriction, vendors] : restrictions) {
        const Purposes purpose = purposeBit(restriction.purpose);
        if (!((vendor.consent | vendor.legitimateInterest) & purpose) ||
            !vendors.contains(vendor.id))
            continue;
        const Purposes moved = vendor.flexible & purpose;
        switch (restriction.type) {
        case Restriction::NotAllowed:
            left.consent &= ~purpose;
            left.legitimateInterest &= ~purpose;
            break;
        case Restriction::RequireConsent:
            left.consent |= moved & vendor.legitimateInterest;
            left.legitimateInterest &= ~purpose;
            break;
        case Restriction::RequireLegitimateInterest:
            left.legitimateInterest |= moved & vendor.consent & ~kConsentOnly;
            left.consent &= ~purpose;
            break;
        }
    }
    return left;
}

// A legitimate interest that may not be claimed is no ground, and consent was not wanted.
Restrictions inForce(const Restrictions& restrictions, const VendorList& list) {
    Restrictions kept;
    for (const auto& [given, vendors] : restrictions) {
        Restriction restriction = given;
        const IdentifierSet known = common(vendors, list.live);
        if (known.empty() || !list.purposes.contains(restriction.purpose))
            continue;
        if (restriction.type == Restriction::RequireLegitimateInterest &&
            (kConsentOnly & purposeBit(restriction.purpose)))
            restriction.type = Restriction::NotAllowed;
        IdentifierSet& all = kept[restriction];
        known.forEachRange(
            [&](std::uint32_t first, std::uint32_t last) { all.insertRange(first, last); });
    }
    return kept;
}

void fillIn(const Choice& choice, const IdentifierSet& disclosed, const VendorList& list,
            TCModel& model) {
    model.specialFeatureOptIns =
        common(choice.specialFeatures.interestAccepted, list.specialFeatures);
    model.purposesConsent = common(choice.purposes.consentAccepted, list.purposes);
    // Formats, field PurposesLITransparency: bits 2 to 5 are 0; purpose 1 is asked for consent.
    model.purposesLITransparency =
        without(kConsentOnly, common(choice.purposes.interestAccepted, list.purposes));
    IdentifierSet consent;
    IdentifierSet interest;
    for (const ListedVendor& vendor : list.vendors) {
        const Permitted may = permitted(vendor, model.publisherRestrictions);
        if (may.consent && choice.vendors.consentAccepted.contains(vendor.id))
            consent.insert(vendor.id);
        // Formats, "Vendor Legitimate Interest Section", BitField: transparency of legitimate
        // interests, special purposes included, unless the user objected, which special purposes
        // alone leave no room for.
        if (disclosed.contains(vendor.id) &&
            (vendor.hasSpecialPurposesOnly() ||
             ((may.legitimateInterest || vendor.hasSpecialPurposes) &&
              !choice.hasObjectedTo(vendor.id))))
            interest.insert(vendor.id);
    }
    // Nobody can do anything with consent to a vendor alone, and who reads the string doubts it.
    if (model.purposesConsent.empty())
        consent = {};
    model.vendorConsent = sectionOf(std::move(consent));
    model.vendorLegitimateInterest = sectionOf(std::move(interest));
    // Formats, "Disclosed Vendors": a mandatory segment, be it empty; deleted vendors "MUST NOT be
    // established to users" ("Example Global Vendor List JSON Object").
    model.disclosedVendors = sectionOf(common(disclosed, list.live));
}

} // namespace vx::services::tcf
