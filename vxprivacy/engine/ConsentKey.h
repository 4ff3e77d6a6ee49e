#pragma once

#include "vxprivacy/engine/VXPrivacyConstants.h"

#include <cstring>
#include <string_view>

namespace vx {

/// What a consent entry is about, as the prefix of its key says.
enum class ConsentKind { Category, Vendor, Feature, None };

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
struct ConsentNames {
    std::string_view prefix;
    std::string_view savedList;
};

/// Those of `kind`, which is not `None`.
constexpr ConsentNames consentNames(ConsentKind kind) {
    if (kind == ConsentKind::Category)
        return {kVXCategoryPrefix, kVXSavedCategories};
    if (kind == ConsentKind::Vendor)
        return {kVXVendorPrefix, kVXSavedVendors};
    return {kVXFeaturePrefix, kVXSavedFeatures};
}

} // namespace vx
