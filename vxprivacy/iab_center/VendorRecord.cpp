#include "vxprivacy/iab_center/VendorRecord.h"

namespace vx {

namespace {

std::vector<std::int32_t> numbersOf(const JSONValue& list) {
    std::vector<std::int32_t> numbers;
    for (const JSONValue& element : list.elements())
        if (element.number())
            numbers.push_back(element.integerValue());
    return numbers;
}

} // namespace

VendorRecord VendorRecord::of(const JSONValue& entry) {
    VendorRecord record;
    record.vendorID = entry["id"].integerValue();
    if (const auto address = entry["policyUrl"].string())
        record.privacyPolicy = *address;
    record.purposes = numbersOf(entry["purposes"]);
    record.legIntPurposes = numbersOf(entry["legIntPurposes"]);
    record.specialPurposes = numbersOf(entry["specialPurposes"]);
    record.features = numbersOf(entry["features"]);
    record.specialFeatures = numbersOf(entry["specialFeatures"]);
    return record;
}

} // namespace vx
