#pragma once

#include <cstring>
#include <string_view>

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

// The words of what is stored: the values of entries, and what their keys begin with. Found again
// in every user's store: never change one.

/// The value of an accepted entry, and of the global consent where something is accepted. No other
/// text is an acceptance.
inline constexpr std::string_view kConsentAccepted = "1";
/// The value of a refused entry, and of the global consent where nothing is accepted.
inline constexpr std::string_view kConsentRefused = "0";
/// The value of an entry that is accepted or not.
constexpr std::string_view consentValue(bool accepted) {
    return accepted ? kConsentAccepted : kConsentRefused;
}

/// The two values of the display flag.
inline constexpr std::string_view kMustDisplay = "1";
inline constexpr std::string_view kNeedNotDisplay = "0";

/// What a consent entry is about, as the prefix of its key says.
enum class ConsentKind { Category, Vendor, Feature, None };

/// The kind of the entry under `key`. No prefix begins with another, so a key has one kind at most.
/// Asked several times for each of thousands of entries, so it compares without a call.
inline ConsentKind consentKind(std::string_view key) {
    const auto has = [&](std::string_view prefix) {
        return key.size() >= prefix.size() &&
               std::memcmp(key.data(), prefix.data(), prefix.size()) == 0;
    };
    if (has(kVXCategoryPrefix))
        return ConsentKind::Category;
    if (has(kVXVendorPrefix))
        return ConsentKind::Vendor;
    return has(kVXFeaturePrefix) ? ConsentKind::Feature : ConsentKind::None;
}

/// The prefix of a kind's keys, and the key of the list of those that are saved.
struct VXPRIVACY_EXPORT ConsentNames {
    std::string_view prefix;    ///< "PRIVACY_CAT_"
    std::string_view savedList; ///< the key of the list
};

/// The kinds with entries of their own, in the order in which they are saved and listed.
inline constexpr ConsentKind kConsentKinds[] = {ConsentKind::Category, ConsentKind::Vendor,
                                                ConsentKind::Feature};

/// Those of `kind`, which is not `None`.
constexpr ConsentNames consentNames(ConsentKind kind) {
    if (kind == ConsentKind::Category)
        return {kVXCategoryPrefix, kVXSavedCategories};
    if (kind == ConsentKind::Vendor)
        return {kVXVendorPrefix, kVXSavedVendors};
    return {kVXFeaturePrefix, kVXSavedFeatures};
}

/// The kind whose prefix is exactly `prefix`.
constexpr ConsentKind kindOfPrefix(std::string_view prefix) {
    for (ConsentKind kind : kConsentKinds)
        if (consentNames(kind).prefix == prefix)
            return kind;
    return ConsentKind::None;
}

/// The kind whose keys stand in the saved list `list`; categories for any other name.
constexpr ConsentKind kindOfList(std::string_view list) {
    if (list == kVXSavedVendors)
        return ConsentKind::Vendor;
    return list == kVXSavedFeatures ? ConsentKind::Feature : ConsentKind::Category;
}

} // namespace vx
