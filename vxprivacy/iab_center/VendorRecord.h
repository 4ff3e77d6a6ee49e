#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/JSONValue.h"

namespace vx {

/// What the vendor list says of a vendor, as far as screens tell it. What stands in every row is
/// read at once, the rest when it is asked for: of the thousands few are opened.
class VXPRIVACY_EXPORT VendorRecord {
public:
    /// Of nothing.
    VendorRecord() = default;
    /// The entry of the list under `key`; what it lacks is 0, absent or empty. All texts live as
    /// long as any value of the list.
    VendorRecord(std::string_view key, JSONValue entry);

    /// The vendor's ID as the list names the entry, and as the entry says it.
    std::string_view key() const { return key_; }
    std::int32_t vendorID() const { return vendorID_; }
    /// Not to be trusted: any text.
    std::string_view name() const { return name_; }
    /// Whether the list keeps the vendor only for those who knew it.
    bool deleted() const { return deleted_; }
    /// Whether the vendor asks for anything that a user may refuse.
    bool hasChoice() const { return hasChoice_; }
    /// The entry itself; absent for a record of nothing.
    const JSONValue& entry() const { return entry_; }

    // Addresses, not to be trusted. Lists of format 3 have those of both for each of several
    // languages: the ones in `language`, else in English, else the first.

    /// What the vendor says of its use of data.
    std::optional<std::string_view> privacyPolicy(std::string_view language) const;
    /// Why the vendor may claim a legitimate interest.
    std::optional<std::string_view> legIntClaim(std::string_view language) const;
    /// What the vendor keeps on a device, for machines.
    std::optional<std::string_view> deviceStorageDisclosure() const;

    /// What the vendor declares, by the list's IDs.
    std::vector<std::int32_t> purposes() const { return numbers("purposes"); }
    std::vector<std::int32_t> legIntPurposes() const { return numbers("legIntPurposes"); }
    std::vector<std::int32_t> specialPurposes() const { return numbers("specialPurposes"); }
    std::vector<std::int32_t> features() const { return numbers("features"); }
    std::vector<std::int32_t> specialFeatures() const { return numbers("specialFeatures"); }
    /// Of the list's "dataCategories".
    std::vector<std::int32_t> dataDeclaration() const { return numbers("dataDeclaration"); }

    /// For how many days data is kept: in general, and for single purposes.
    struct Retention {
        /// Absent where the list does not say.
        std::optional<std::int32_t> standard;
        /// Each with its days.
        std::vector<std::pair<std::int32_t, std::int32_t>> purposes;
        std::vector<std::pair<std::int32_t, std::int32_t>> specialPurposes;
    };
    /// What the list says of that.
    Retention dataRetention() const;

private:
    std::vector<std::int32_t> numbers(std::string_view list) const;
    JSONValue urls(std::string_view language) const;

    std::string_view key_;
    JSONValue entry_;
    std::string_view name_;
    std::int32_t vendorID_ = 0;
    bool deleted_ = false;
    bool hasChoice_ = false;
};

} // namespace vx
