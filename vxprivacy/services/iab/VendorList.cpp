#include "vxprivacy/services/iab/VendorList.h"

#include <optional>

#include "vxprivacy/services/iab/Layout.h"

namespace vx::services::tcf {

namespace {

std::uint32_t numberUpTo(std::uint32_t greatest, const JSONValue& value) {
    const std::optional<std::int64_t> number = value.integer();
    return number && *number > 0 && *number <= greatest ? static_cast<std::uint32_t>(*number) : 0;
}

std::uint32_t fieldOf(unsigned width, const JSONValue& value) {
    return numberUpTo((1u << width) - 1, value);
}

IdentifierSet identifiersOf(const JSONValue& section, std::uint32_t greatest) {
    IdentifierSet identifiers;
    for (const auto& [key, item] : section.members())
        if (const std::uint32_t id = numberUpTo(greatest, item["id"]))
            identifiers.insert(id);
    return identifiers;
}

Purposes purposesIn(const JSONValue& numbers) {
    Purposes purposes = 0;
    for (const JSONValue& number : numbers.elements())
        if (const std::uint32_t purpose = numberUpTo(kPurposesWidth, number))
            purposes |= purposeBit(purpose);
    return purposes;
}

// In one walk through the record: asking member by member begins anew each time.
void addVendor(const JSONValue& record, Purposes known, VendorList& list) {
    ListedVendor vendor;
    bool isDeleted = false;
    for (const auto& [name, value] : record.members())
        if (name == "id")
            vendor.id = numberUpTo(IdentifierSet::kGreatest, value);
        else if (name == "purposes")
            vendor.consent = purposesIn(value);
        else if (name == "legIntPurposes")
            vendor.legitimateInterest = purposesIn(value);
        else if (name == "flexiblePurposes")
            vendor.flexible = purposesIn(value);
        else if (name == "specialPurposes")
            vendor.hasSpecialPurposes = !value.elements().empty();
        else if (name == "deletedDate")
            isDeleted = true;
    if (vendor.id == 0 || list.live.contains(vendor.id) || list.deleted.contains(vendor.id))
        return; // of two that claim one ID the first counts
    vendor.consent &= known;
    vendor.legitimateInterest &= known;
    vendor.flexible &= known;
    (isDeleted ? list.deleted : list.live).insert(vendor.id);
    if (!isDeleted)
        list.vendors.push_back(vendor);
}

} // namespace

VendorList VendorList::of(const JSONValue& document) {
    VendorList list{.format = fieldOf(kCmpWidth, document["gvlSpecificationVersion"]),
                    .version = fieldOf(kCmpWidth, document["vendorListVersion"]),
                    .policyVersion = fieldOf(kPolicyVersionWidth, document["tcfPolicyVersion"]),
                    .purposes = identifiersOf(document["purposes"], kPurposesWidth),
                    .specialFeatures =
                        identifiersOf(document["specialFeatures"], kSpecialFeaturesWidth)};
    Purposes known = 0;
    for (std::uint32_t purpose = 1; purpose <= kPurposesWidth; ++purpose)
        if (list.purposes.contains(purpose))
            known |= purposeBit(purpose);
    for (const auto& [key, record] : document["vendors"].members())
        addVendor(record, known, list);
    return list;
}

} // namespace vx::services::tcf
