#include "vxprivacy/engine/SavedEntries.h"

#include <utility>

#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/core/VXVariables.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

namespace {

constexpr std::string_view kLists[] = {kVXSavedCategories, kVXSavedVendors, kVXSavedFeatures};

} // namespace

std::optional<std::string> SavedEntries::text(std::string_view key) {
    return VXUserDefaults::retrieveInfoFromUserDefaults(key);
}

bool SavedEntries::isAccepted(std::string_view key) {
    return text(key) == kConsentAccepted;
}

std::vector<std::string> SavedEntries::getSavedCategoriesAndVendors() {
    std::vector<std::string> keys;
    for (std::string_view list : kLists)
        appendByParsing(text(list), keys);
    return keys;
}

void SavedEntries::appendByParsing(const std::optional<std::string>& list,
                                   std::vector<std::string>& keys) {
    if (!list || list->empty())
        return;
    for (std::string_view key : split(*list, ';'))
        keys.emplace_back(key);
}

std::string SavedEntries::categoriesToStartWith() {
    std::string query;
    for (const std::string& key : getSavedCategoriesAndVendors())
        query.append("&").append(key).append("=").append(text(key).value_or("(null)"));
    return query;
}

void SavedEntries::store(std::string_view key, std::string_view value) {
    VXUserDefaults::saveInfoToUserDefaults(value, key);
}

bool SavedEntries::getCustomCategories(const ConsentDictionary& consent, std::string_view prefix) {
    bool accepted = false;
    std::string keys;
    const ConsentKind kind = kindOfPrefix(prefix);
    for (const auto& [key, value] : consent) {
        if (kind == ConsentKind::None ? !key.starts_with(prefix) : consentKind(key) != kind)
            continue;
        keys.append(key).append(1, ';');
        accepted |= value == kConsentAccepted;
        store(key, value);
    }
    if (kind != ConsentKind::None)
        storeList(consentNames(kind).savedList, keys);
    return accepted;
}

void SavedEntries::storeList(std::string_view list, std::string_view keys) {
    if (!keys.empty())
        store(list, keys);
}

void SavedEntries::clearLists() {
    for (std::string_view list : kLists)
        store(list, "");
}

void SavedEntries::storeGlobalConsent(std::string_view value) {
    store(kVXPrivacyConsent, value);
    saveTimeOfConsent();
}

void SavedEntries::standByGlobalConsent(std::string_view value) {
    VXUserDefaults::standBy(value, kVXPrivacyConsent);
}

void SavedEntries::saveTimeOfConsent() {
    store(kVXConsentTime, VXPredefinedVariables::sharedInstance().nowMsString());
}

void SavedEntries::storeDisplayFlag(std::string_view value) {
    store(kVXShouldDisplayPrivacyCenter, value);
}

void SavedEntries::armDisplayFlagIfAbsent() {
    VXUserDefaults::saveIfAbsent(kMustDisplay, kVXShouldDisplayPrivacyCenter);
}

ConsentDictionary SavedEntries::snapshot() {
    ConsentDictionary entries;
    const auto add = [&](std::string_view key) {
        if (auto value = text(key))
            entries.set(key, std::move(*value));
    };
    for (std::string_view key : {kVXPrivacyConsent, kVXConsentTime})
        add(key);
    for (std::string_view list : kLists)
        add(list);
    for (const std::string& key : getSavedCategoriesAndVendors())
        add(key);
    return entries;
}

} // namespace vx
