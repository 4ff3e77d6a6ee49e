// Recording a global decision and making every save effective.

#include "vxprivacy/engine/VXMobilePrivacy.h"

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/foundation/Text.h"

#include <utility>

namespace vx {

void VXMobilePrivacy::acceptAllConsent() {
    saveAllCategories("1");
}

void VXMobilePrivacy::refuseAllConsent() {
    saveAllCategories("0");
}

void VXMobilePrivacy::saveAllCategories(std::string_view value) {
    if (enableIAB_) { // the choices are purposes and vendors there, never these categories
        VXLogger::sharedInstance().logMessage(
            "Nothing is saved: there is no IAB privacy center to accept or refuse all", 4);
        return;
    }
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
        if (key.starts_with(kVXCategoryPrefix) || key.starts_with(kVXVendorPrefix) ||
            key.starts_with(kVXFeaturePrefix))
            vxInstance_->addPermanentData(key, value);
}

} // namespace vx
