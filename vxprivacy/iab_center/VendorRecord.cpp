#include "vxprivacy/iab_center/VendorRecord.h"

#include <utility>

#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

namespace {

// Names of views carry the IDs of items, and no name holds a minus: an item with such an ID would
// leave all others of its panel without their places.
bool isItem(std::int32_t id) {
    return id >= 0;
}

// By the purposes' IDs.
std::vector<std::pair<std::int32_t, std::int32_t>> daysOf(const JSONValue& purposes) {
    std::vector<std::pair<std::int32_t, std::int32_t>> days;
    for (const auto& [id, kept] : purposes.members())
        if (kept.number() && isItem(integerValue(id)))
            days.emplace_back(integerValue(id), kept.integerValue());
    return days;
}

} // namespace

VendorRecord::VendorRecord(std::string_view key, JSONValue entry)
    : key_(key), entry_(std::move(entry)), name_(entry_["name"].string().value_or("")),
      vendorID_(entry_["id"].integerValue()), deleted_(entry_["deletedDate"]),
      hasChoice_(!purposes().empty() || !legIntPurposes().empty()) {}

std::optional<std::string_view> VendorRecord::privacyPolicy(std::string_view language) const {
    const auto address = entry_["policyUrl"].string();
    return address ? address : urls(language)["privacy"].string();
}

std::optional<std::string_view> VendorRecord::legIntClaim(std::string_view language) const {
    return urls(language)["legIntClaim"].string();
}

std::optional<std::string_view> VendorRecord::deviceStorageDisclosure() const {
    return entry_["deviceStorageDisclosureUrl"].string();
}

VendorRecord::Retention VendorRecord::dataRetention() const {
    const JSONValue declared = entry_["dataRetention"];
    const JSONValue standard = declared["stdRetention"];
    return {standard.number() ? std::optional(standard.integerValue()) : std::nullopt,
            daysOf(declared["purposes"]), daysOf(declared["specialPurposes"])};
}

JSONValue VendorRecord::urls(std::string_view language) const {
    const std::vector<JSONValue> all = entry_["urls"].elements();
    for (const std::string_view wanted : {language, std::string_view("en")})
        for (const JSONValue& urls : all)
            if (urls["langId"].string() == wanted)
                return urls;
    return all.empty() ? JSONValue() : all.front();
}

std::vector<std::int32_t> VendorRecord::numbers(std::string_view list) const {
    std::vector<std::int32_t> numbers;
    for (const JSONValue& element : entry_[list].elements())
        if (element.number() && isItem(element.integerValue()))
            numbers.push_back(element.integerValue());
    return numbers;
}

} // namespace vx
