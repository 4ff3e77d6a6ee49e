#include "vxprivacy/engine/ConsentSave.h"

#include "vxprivacy/engine/ConsentBeacon.h"
#include "vxprivacy/engine/DecisionTransaction.h"
#include "vxprivacy/engine/SDKSwitch.h"
#include "vxprivacy/engine/SavedConsent.h"
#include "vxprivacy/engine/SavedEntries.h"
#include "vxprivacy/engine/TCStringContents.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

namespace {

void switchSDK(bool accepted, EngineState& state) {
    if (accepted)
        SDKSwitch::enable(state);
    else
        SDKSwitch::disable(state);
    SavedEntries::standByGlobalConsent(consentValue(accepted));
}

} // namespace

void ConsentSave::saveConsent(const ConsentDictionary& consent, EngineState& state) {
    DecisionTransaction transaction(state);
    checkPrefixes(consent);
    const std::uint32_t before = state.tcDataChanges;
    propagate(&consent, state);
    // What the callback saved or forgot is later than `consent`, and its TC data stands.
    if (state.enableIAB && state.tcDataChanges == before)
        saveConsentStringV2(consent, state);
    SavedEntries::storeDisplayFlag(kNeedNotDisplay);
    sendConsentHitToVX(state, kBeaconSave, kVXTypeActionSavePrivacyCenter);
    transaction.commit();
}

void ConsentSave::propagate(const ConsentDictionary* consent, EngineState& state) {
    DecisionTransaction transaction(state);
    if (consent) {
        saveInSharedPreferences(*consent, state);
        saveConsentInSDK(*consent, state);
        state.callBack(*consent);
    } else {
        SDKSwitch::disable(state);
        SavedConsent::reset(state);
        state.callBack({});
    }
    SavedEntries::saveTimeOfConsent();
    transaction.commit();
}

void ConsentSave::saveCustomCategories(const ConsentDictionary& consent, EngineState& state) {
    DecisionTransaction transaction(state);
    bool anyAccepted = false;
    std::string keys;
    for (const auto& [key, value] : consent) {
        // The prefix may stand anywhere in the key, deliberately.
        if (key.find(kVXCategoryPrefix) == std::string::npos) {
            VXLogger::sharedInstance().logMessage(
                formatted("Error in category format, it should start with + %@. Received: %@/%@",
                          {kVXCategoryPrefix, key, value}),
                kLogProblem);
            continue;
        }
        keys.append(key).append(1, ';');
        anyAccepted |= value != kConsentRefused; // anything else is an acceptance, deliberately
        SavedEntries::store(key, value);
    }
    SavedEntries::storeList(kVXSavedCategories, keys);
    switchSDK(anyAccepted, state);
    state.callBack(consent);
    transaction.commit();
}

void ConsentSave::checkPrefixes(const ConsentDictionary& consent) {
    for (const auto& [key, value] : consent)
        if (consentKind(key) == ConsentKind::None)
            VXLogger::sharedInstance().logMessage(
                formatted("Error in category format, it should start with either %@, %@ or %@\n "
                          "Received: %@",
                          {kVXCategoryPrefix, kVXVendorPrefix, kVXFeaturePrefix, key}),
                kLogProblem);
}

void ConsentSave::saveInSharedPreferences(const ConsentDictionary& consent, EngineState& state) {
    DecisionTransaction transaction(state);
    bool accepted = false;
    for (ConsentKind kind : kConsentKinds)
        accepted |= SavedEntries::getCustomCategories(consent, consentNames(kind).prefix);
    switchSDK(accepted, state);
    transaction.commit();
}

void ConsentSave::saveConsentInSDK(const ConsentDictionary& consent, const EngineState& state) {
    const auto vxInstance = state.vxInstance;
    if (!vxInstance)
        return;
    for (const auto& [key, value] : consent)
        if (consentKind(key) != ConsentKind::None)
            vxInstance->addPermanentData(key, value);
}

} // namespace vx
