#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/foundation/JSONValue.h"

namespace vx {

/// What the vendor list says of a vendor, as far as screens tell it. What stands in every row is
/// read at once, the rest when it is asked for: of the thousands few are opened.
class VendorRecord {
public:
    VendorRecord() = default;
    /// The entry of the list under `key`; what it lacks is 0, absent or empty. All texts live as
    /// long as any value of the list.
    VendorRecord(std::string_view key, JSONValue entry);

    std::string_view key() const { return key_; }
    std::int32_t vendorID() const { return vendorID_; }
    std::string_view name() const { return name_; }
    /// Whether the list keeps the vendor only for those who knew it.
    bool deleted() const { return deleted_; }
    /// Whether the vendor asks for anything that a user may refuse.
    bool hasChoice() const { return hasChoice_; }
    /// The entry itself; absent for a record of nothing.
    const JSONValue& entry() const { return entry_; }

    /// An address, not to be trusted. Lists of format 3 have one for each of several languages: the
    /// one in `language`, else in English, else the first.
    std::optional<std::string_view> privacyPolicy(std::string_view language) const;
    std::vector<std::int32_t> purposes() const { return numbers("purposes"); }
    std::vector<std::int32_t> legIntPurposes() const { return numbers("legIntPurposes"); }
    std::vector<std::int32_t> specialPurposes() const { return numbers("specialPurposes"); }
    std::vector<std::int32_t> features() const { return numbers("features"); }
    std::vector<std::int32_t> specialFeatures() const { return numbers("specialFeatures"); }

private:
    std::vector<std::int32_t> numbers(std::string_view list) const;

    std::string_view key_;
    JSONValue entry_;
    std::string_view name_;
    std::int32_t vendorID_ = 0;
    bool deleted_ = false;
    bool hasChoice_ = false;
};

} // namespace vx
