#include "vxprivacy/engine/SDKSwitch.h"

#include <utility>

#include "vxprivacy/engine/DecisionTransaction.h"
#include "vxprivacy/engine/SavedEntries.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXNotifications.h"

namespace vx {

void SDKSwitch::enable(EngineState& state) {
    DecisionTransaction transaction(state);
    if (turnOn(state))
        SavedEntries::storeGlobalConsent(kConsentAccepted);
    transaction.commit();
}

void SDKSwitch::disable(EngineState& state) {
    DecisionTransaction transaction(state);
    if (turnOff(state))
        SavedEntries::storeGlobalConsent(kConsentRefused);
    transaction.commit();
}

bool SDKSwitch::turnOn(EngineState& state) {
    if (std::exchange(state.privacyState, PrivacyState::Accepted) == PrivacyState::Accepted)
        return false;
    VXLogger::sharedInstance().logMessage("Zentrix's SDK is now enabled", kLogSwitching);
    std::optional<Notification::UserInfo> entries;
    if (std::string query = SavedEntries::categoriesToStartWith(); !query.empty())
        entries = Notification::UserInfo{{std::string(kVXUserInfo_POSTData), std::move(query)}};
    state.send(kVXNotification_StartingTheSDK, std::move(entries));
    return true;
}

bool SDKSwitch::turnOff(EngineState& state) {
    if (std::exchange(state.privacyState, PrivacyState::Refused) == PrivacyState::Refused)
        return false;
    VXLogger::sharedInstance().logMessage(
        "Zentrix's SDK is now disabled, all information you will send it will be ignored",
        kLogSwitching);
    state.send(kVXNotification_StoppingTheSDK);
    return true;
}

} // namespace vx
