// Recording a global decision and making every save effective.

#include "vxprivacy/engine/VXMobilePrivacy.h"

#include "vxprivacy/engine/ConsentKey.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/foundation/Text.h"

#include <utility>

namespace vx {

namespace {

IABPrivacyCenterFactory makeIABPrivacyCenter = nullptr;

} // namespace

IABPrivacyCenter::~IABPrivacyCenter() = default;

void VXMobilePrivacy::registerIABPrivacyCenter(IABPrivacyCenterFactory factory) {
    makeIABPrivacyCenter = factory;
}

void VXMobilePrivacy::acceptAllConsent() {
    if (enableIAB_)
        saveAllOfIAB(&IABPrivacyCenter::actionAcceptAll);
    else
        saveAllCategories("1");
}

void VXMobilePrivacy::refuseAllConsent() {
    if (enableIAB_)
        saveAllOfIAB(&IABPrivacyCenter::actionRefuseAll);
    else
        saveAllCategories("0");
}

void VXMobilePrivacy::saveAllOfIAB(void (IABPrivacyCenter::*choose)()) {
    if (!makeIABPrivacyCenter) {
        VXLogger::sharedInstance().logMessage(
            "Nothing is saved: no IAB privacy center is registered", 4);
        return;
    }
    StoreTransaction transaction = VXUserDefaults::transaction();
    const std::unique_ptr<IABPrivacyCenter> center = makeIABPrivacyCenter();
    center->loadIABWithoutPC();
    (*center.*choose)();
    saveConsent(center->savedConsent());
    transaction.commit();
}

void VXMobilePrivacy::saveAllCategories(std::string_view value) {
    const auto file = VXConfigurationFileFactory::sharedInstance().getConfigurationFile("privacy");
    const JSONValue document = file ? file->getJSONDictionary() : JSONValue();
    ConsentDictionary consent;
    const auto add = [&](const JSONValue& category) {
        consent.set(numberedKey(kVXCategoryPrefix, category["ID"].integerValue()),
                    std::string(value));
    };
    for (const JSONValue& category : document["categories"].elements()) {
        add(category);
        for (const JSONValue& subcategory : category["subcategories"].elements())
            add(subcategory);
    }
    saveConsent(consent);
}

void VXMobilePrivacy::propagateConsent(const ConsentDictionary* consent) {
    StoreTransaction transaction = VXUserDefaults::transaction();
    if (consent) {
        saveInSharedPreferences(*consent);
        if (vxInstance_)
            saveConsentInSDK(*consent);
    } else {
        disableSDK();
        resetSavedConsent();
    }
    if (const auto callback = callbackAnswering("consentUpdated:"))
        callback->consentUpdated(consent ? *consent : ConsentDictionary());
    saveTimeOfConsent();
    transaction.commit();
}

void VXMobilePrivacy::saveConsentInSDK(const ConsentDictionary& consent) {
    for (const auto& [key, value] : consent)
        if (consentKind(key) != ConsentKind::None)
            vxInstance_->addPermanentData(key, value);
}

} // namespace vx
