#include "vxprivacy/engine/VXPrivacyAPI.h"

#include <string_view>

#include "vxprivacy/engine/SavedEntries.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

namespace {

std::vector<std::string> acceptedKeys(std::string_view list) {
    std::vector<std::string> accepted;
    const std::string keys = SavedEntries::text(list).value_or("");
    if (keys.empty())
        return accepted;
    for (std::string_view key : split(keys, ';'))
        if (SavedEntries::isAccepted(key))
            accepted.emplace_back(key);
    return accepted;
}

} // namespace

bool VXPrivacyAPI::isConsentAlreadyGiven() {
    return !SavedEntries::text(kVXPrivacyConsent).value_or("").empty();
}

bool VXPrivacyAPI::shouldDisplayPrivacyCenter() {
    const std::string flag = SavedEntries::text(kVXShouldDisplayPrivacyCenter).value_or("");
    return flag.empty() || flag == kMustDisplay;
}

std::int64_t VXPrivacyAPI::getLastTimeConsentWasSaved() {
    return decimalInteger(SavedEntries::text(kVXConsentTime).value_or("")).value_or(0);
}

bool VXPrivacyAPI::isCategoryAccepted(std::int32_t categoryID) {
    return SavedEntries::isAccepted(numberedKey(kVXCategoryPrefix, categoryID));
}

bool VXPrivacyAPI::isVendorAccepted(std::int32_t vendorID) {
    return SavedEntries::isAccepted(numberedKey(kVXVendorPrefix, vendorID));
}

std::vector<std::string> VXPrivacyAPI::getAcceptedCategories() {
    return acceptedKeys(kVXSavedCategories);
}

std::vector<std::string> VXPrivacyAPI::getAcceptedVendors() {
    return acceptedKeys(kVXSavedVendors);
}

std::vector<std::string> VXPrivacyAPI::getAcceptedFeatures() {
    return acceptedKeys(kVXSavedFeatures);
}

std::vector<std::string> VXPrivacyAPI::getAllAcceptedConsent() {
    std::vector<std::string> all = getAcceptedCategories();
    for (const auto& part : {getAcceptedVendors(), getAcceptedFeatures()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace vx
