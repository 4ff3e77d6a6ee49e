// Keeping, restoring, expiring and forgetting consent.

#include "vxprivacy/engine/VXMobilePrivacy.h"

#include "vxprivacy/engine/ConsentKey.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/core/VXVariables.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/iab/VXCMPStorage.h"

namespace vx {

namespace {

std::optional<std::string> stored(std::string_view key) {
    return VXUserDefaults::retrieveInfoFromUserDefaults(key);
}

void store(std::string_view value, std::string_view key) {
    VXUserDefaults::saveInfoToUserDefaults(value, key);
}

// Stores the entries of a kind and their list; says whether one of them is accepted.
bool getCustomCategories(const ConsentDictionary& consent, ConsentKind kind) {
    bool accepted = false;
    std::string list;
    for (const auto& [key, value] : consent) {
        if (consentKind(key) != kind)
            continue;
        list.append(key).append(1, ';');
        accepted |= value == "1";
        store(value, key);
    }
    if (!list.empty())
        store(list, consentNames(kind).savedList);
    return accepted;
}

// The keys of a saved list. The empty piece after the last separator counts as a key, deliberately.
void appendByParsing(const std::optional<std::string>& list, std::vector<std::string>& keys) {
    if (!list || list->empty())
        return;
    for (std::string_view key : split(*list, ';'))
        keys.emplace_back(key);
}

} // namespace

void VXMobilePrivacy::saveConsent(const ConsentDictionary& consent) {
    StoreTransaction transaction = VXUserDefaults::transaction();
    checkPrefixes(consent);
    propagateConsent(&consent);
    if (enableIAB_)
        saveConsentStringV2(consent);
    store("0", kVXShouldDisplayPrivacyCenter);
    sendConsentHit(2, kVXTypeActionSavePrivacyCenter);
    transaction.commit();
}

void VXMobilePrivacy::checkPrefixes(const ConsentDictionary& consent) const {
    for (const auto& [key, value] : consent)
        if (consentKind(key) == ConsentKind::None)
            VXLogger::sharedInstance().logMessage(
                formatted("Error in category format, it should start with either %@, %@ or %@\n "
                          "Received: %@",
                          {kVXCategoryPrefix, kVXVendorPrefix, kVXFeaturePrefix, key}),
                4);
}

void VXMobilePrivacy::saveInSharedPreferences(const ConsentDictionary& consent) {
    bool accepted = false;
    for (ConsentKind kind : {ConsentKind::Category, ConsentKind::Vendor, ConsentKind::Feature})
        accepted |= getCustomCategories(consent, kind);
    if (accepted)
        enableSDK();
    else
        disableSDK();
}

void VXMobilePrivacy::saveCustomCategoriesInSharedPreferences(const ConsentDictionary& consent) {
    StoreTransaction transaction = VXUserDefaults::transaction();
    bool anyAccepted = false;
    std::string list;
    for (const auto& [key, value] : consent) {
        // The prefix may stand anywhere in the key, deliberately.
        if (key.find(kVXCategoryPrefix) == std::string::npos) {
            VXLogger::sharedInstance().logMessage(
                formatted("Error in category format, it should start with + %@. Received: %@/%@",
                          {kVXCategoryPrefix, key, value}),
                4);
            continue;
        }
        list.append(key).append(1, ';');
        anyAccepted |= value != "0"; // anything else is an acceptance here, deliberately
        store(value, key);
    }
    if (!list.empty())
        store(list, kVXSavedCategories);
    if (anyAccepted)
        enableSDK();
    else
        disableSDK();
    if (const auto callback = callbackAnswering("consentUpdated:"))
        callback->consentUpdated(consent);
    transaction.commit();
}

std::vector<std::string> VXMobilePrivacy::getSavedCategoriesAndVendors() {
    std::vector<std::string> keys;
    for (std::string_view list : {kVXSavedCategories, kVXSavedVendors, kVXSavedFeatures})
        appendByParsing(stored(list), keys);
    return keys;
}

void VXMobilePrivacy::saveTimeOfConsent() {
    store(VXPredefinedVariables::sharedInstance().nowMsString(), kVXConsentTime);
}

void VXMobilePrivacy::checkSavedConsent() {
    const auto global = stored(kVXPrivacyConsent);
    if (!global) {
        privacyState_ = 0;
        return;
    }
    ConsentDictionary restored;
    for (const std::string& key : getSavedCategoriesAndVendors()) {
        const std::string value = stored(key).value_or("");
        if (value.empty())
            continue;
        restored.set(key, value);
        if (vxInstance_)
            vxInstance_->addPermanentData(key, value);
    }
    // Restoring is no decision: neither the global consent nor its time is written.
    if (global == "1")
        switchSDKOn();
    else if (global == "0")
        switchSDKOff();
    if (const auto callback = callbackAnswering("consentUpdated:"))
        callback->consentUpdated(restored);
}

void VXMobilePrivacy::resetSavedConsent() {
    StoreTransaction transaction = VXUserDefaults::transaction();
    privacyState_ = 0;
    const std::string global = stored(kVXPrivacyConsent).value_or("");
    store("", kVXPrivacyConsent);
    if (!global.empty()) {
        for (const std::string& key : getSavedCategoriesAndVendors()) {
            store("", key);
            if (vxInstance_)
                vxInstance_->removePermanentData(key);
        }
    }
    for (std::string_view list : {kVXSavedCategories, kVXSavedVendors, kVXSavedFeatures})
        store("", list);
    if (enableIAB_) {
        VXCMPStorage::saveConsentString("");
        VXCMPStorage::resetTCData();
    }
    transaction.commit();
}

void VXMobilePrivacy::checkConsentValidity() {
    StoreTransaction transaction = VXUserDefaults::transaction();
    consentExpired_ = false;
    if (const auto time = stored(kVXConsentTime)) {
        // Unsigned, so that a time in the future wraps to a huge age and counts as expired.
        const std::uint64_t age =
            VXPredefinedVariables::sharedInstance().nowMs() - unsignedInteger(*time);
        consentExpired_ = age > kVXConsentExpirationDuration;
    }
    if (consentExpired_) {
        privacyState_ = 0;
        store("1", kVXShouldDisplayPrivacyCenter);
        if (const auto callback = callbackAnswering(
                "consentOutdated:")) // asked with the colon, sent without, deliberately
            callback->consentOutdated();
    }
    transaction.commit();
}

std::string VXMobilePrivacy::categoriesToStartWith() {
    std::string query;
    for (const std::string& key : getSavedCategoriesAndVendors())
        query.append("&").append(key).append("=").append(stored(key).value_or("(null)"));
    return query;
}

} // namespace vx
