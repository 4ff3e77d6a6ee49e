#include "vxprivacy/iab_center/VendorRecord.h"

#include <utility>

namespace vx {

VendorRecord::VendorRecord(std::string_view key, JSONValue entry)
    : key_(key), entry_(std::move(entry)), name_(entry_["name"].string().value_or("")),
      vendorID_(entry_["id"].integerValue()), deleted_(entry_["deletedDate"]),
      hasChoice_(!purposes().empty() || !legIntPurposes().empty()) {}

std::vector<std::int32_t> VendorRecord::numbers(std::string_view list) const {
    std::vector<std::int32_t> numbers;
    for (const JSONValue& element : entry_[list].elements())
        if (element.number())
            numbers.push_back(element.integerValue());
    return numbers;
}

} // namespace vx
