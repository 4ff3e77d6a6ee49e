#include "vxprivacy/iab_center/VendorRecord.h"

#include <algorithm>
#include <utility>

namespace vx {

VendorRecord::VendorRecord(std::string_view key, JSONValue entry)
    : key_(key), entry_(std::move(entry)), name_(entry_["name"].string().value_or("")),
      vendorID_(entry_["id"].integerValue()), deleted_(entry_["deletedDate"]),
      hasChoice_(!purposes().empty() || !legIntPurposes().empty()) {}

std::optional<std::string_view> VendorRecord::privacyPolicy(std::string_view language) const {
    if (const auto address = entry_["policyUrl"].string())
        return address;
    const std::vector<JSONValue> all = entry_["urls"].elements();
    auto found = all.end();
    for (const std::string_view wanted : {language, std::string_view("en")})
        if (found == all.end())
            found = std::ranges::find_if(
                all, [&](const JSONValue& urls) { return urls["langId"].string() == wanted; });
    if (found == all.end())
        found = all.begin();
    return found == all.end() ? std::nullopt : (*found)["privacy"].string();
}

std::vector<std::int32_t> VendorRecord::numbers(std::string_view list) const {
    std::vector<std::int32_t> numbers;
    for (const JSONValue& element : entry_[list].elements())
        if (element.number())
            numbers.push_back(element.integerValue());
    return numbers;
}

} // namespace vx
