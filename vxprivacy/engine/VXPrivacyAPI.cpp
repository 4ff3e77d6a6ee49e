#include "vxprivacy/engine/VXPrivacyAPI.h"

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/foundation/Text.h"

#include <optional>
#include <string_view>

namespace vx {

namespace {

std::optional<std::string> storedText(std::string_view key) {
    return VXUserDefaults::retrieveInfoFromUserDefaults(key);
}

std::vector<std::string> acceptedKeys(std::string_view list) {
    std::vector<std::string> accepted;
    const std::string keys = storedText(list).value_or("");
    if (keys.empty())
        return accepted;
    for (std::string_view key : split(keys, ';'))
        if (storedText(key) == "1")
            accepted.emplace_back(key);
    return accepted;
}

} // namespace

bool VXPrivacyAPI::isConsentAlreadyGiven() {
    return !storedText(kVXPrivacyConsent).value_or("").empty();
}

bool VXPrivacyAPI::shouldDisplayPrivacyCenter() {
    const std::string flag = storedText(kVXShouldDisplayPrivacyCenter).value_or("");
    return flag.empty() || flag == "1";
}

std::int64_t VXPrivacyAPI::getLastTimeConsentWasSaved() {
    return decimalInteger(storedText(kVXConsentTime).value_or("")).value_or(0);
}

bool VXPrivacyAPI::isCategoryAccepted(std::int32_t categoryID) {
    return storedText(numberedKey(kVXCategoryPrefix, categoryID)) == "1";
}

bool VXPrivacyAPI::isVendorAccepted(std::int32_t vendorID) {
    return storedText(numberedKey(kVXVendorPrefix, vendorID)) == "1";
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
