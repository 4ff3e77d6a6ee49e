#include "vxprivacy/engine/SavedConsent.h"

#include "vxprivacy/engine/DecisionTransaction.h"
#include "vxprivacy/engine/SDKSwitch.h"
#include "vxprivacy/engine/SavedEntries.h"
#include "vxprivacy/platform/core/VXVariables.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/iab/VXCMPStorage.h"

namespace vx {

namespace {

// Hands the saved entries that have a value to the tag SDK, and returns them.
ConsentDictionary restoreEntries(const EngineState& state) {
    ConsentDictionary restored;
    for (const std::string& key : SavedEntries::getSavedCategoriesAndVendors()) {
        const std::string value = SavedEntries::text(key).value_or("");
        if (value.empty())
            continue;
        restored.set(key, value);
        if (state.vxInstance)
            state.vxInstance->addPermanentData(key, value);
    }
    return restored;
}

void forgetEntries(const EngineState& state) {
    for (const std::string& key : SavedEntries::getSavedCategoriesAndVendors()) {
        SavedEntries::store(key, "");
        if (state.vxInstance)
            state.vxInstance->removePermanentData(key);
    }
}

// Unsigned, so that a time in the future wraps to a huge age and counts as expired.
bool isExpired(std::string_view time) {
    const std::uint64_t age =
        VXPredefinedVariables::sharedInstance().nowMs() - unsignedInteger(time);
    return age > kVXConsentExpirationDuration;
}

} // namespace

void SavedConsent::restore(EngineState& state) {
    const auto global = SavedEntries::text(kVXPrivacyConsent);
    if (!global) {
        state.privacyState = PrivacyState::Undecided;
        return;
    }
    const ConsentDictionary restored = restoreEntries(state);
    // Restoring is no decision: neither the global consent nor its time is written.
    if (global == kConsentAccepted)
        SDKSwitch::turnOn(state);
    else if (global == kConsentRefused)
        SDKSwitch::turnOff(state);
    state.callBack(restored);
}

void SavedConsent::checkValidity(EngineState& state) {
    DecisionTransaction transaction(state);
    const auto time = SavedEntries::text(kVXConsentTime);
    state.consentExpired = time && isExpired(*time);
    if (state.consentExpired) {
        state.privacyState = PrivacyState::Undecided;
        SavedEntries::storeDisplayFlag(kMustDisplay);
        // Asked for with a colon and sent without one, deliberately.
        if (const auto callback = state.callbackAnswering("consentOutdated:"))
            callback->consentOutdated();
    }
    transaction.commit();
}

void SavedConsent::reset(EngineState& state) {
    DecisionTransaction transaction(state);
    state.privacyState = PrivacyState::Undecided;
    const std::string global = SavedEntries::text(kVXPrivacyConsent).value_or("");
    SavedEntries::store(kVXPrivacyConsent, "");
    if (!global.empty())
        forgetEntries(state);
    SavedEntries::clearLists();
    if (state.enableIAB) {
        ++state.tcDataChanges;
        VXCMPStorage::saveConsentString("");
        VXCMPStorage::resetTCData();
    }
    transaction.commit();
}

void SavedConsent::takeOver(const ConsentDictionary& before, EngineState& state) {
    const ConsentDictionary now = SavedEntries::snapshot();
    for (const auto& [key, value] : before)
        if (state.vxInstance && consentKind(key) != ConsentKind::None && now.find(key) == nullptr)
            state.vxInstance->removePermanentData(key);
    if (SavedEntries::text(kVXPrivacyConsent).value_or("").empty())
        state.privacyState = PrivacyState::Undecided;
    restore(state);
    checkValidity(state);
}

} // namespace vx
