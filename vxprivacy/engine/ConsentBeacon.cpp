#include "vxprivacy/engine/ConsentBeacon.h"

#include <utility>

#include "vxprivacy/configuration/ConfigurationNames.h"
#include "vxprivacy/engine/SavedEntries.h"
#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/platform/core/VXVariables.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

namespace {

std::int32_t configurationVersion() {
    const auto file = configurationFile(kPrivacyConfiguration);
    return file ? file->version() : 0;
}

std::string acceptedCategoriesAndFeatures() {
    std::string ids = addToHit(kVXSavedCategories);
    // With features but no categories the list begins with a comma, deliberately.
    if (const auto features = addToHit(kVXSavedFeatures); !features.empty())
        ids.append(",").append(features);
    return ids;
}

// Values are put in as they are: one that contains a quote breaks the JSON, deliberately.
std::string bodyOf(const EngineState& state, std::int32_t action, std::string_view type) {
    std::string body = "{\"privacyBeacon\":{";
    body += formatted("\"id_vx\":\"0\",\"id_privacy\":%d,\"site\":%d,\"version\":\"%d\",",
                      {state.privacyID, state.clientSiteID, configurationVersion()});
    if (action == kBeaconView) {
        body += "\"privacy_action\":\"V\",";
    } else {
        body += formatted("\"privacy_action\":\"%@\",", {SavedEntries::text(kVXPrivacyConsent)});
        body += formatted("\"list_categories\":\"%@\",", {acceptedCategoriesAndFeatures()});
        body += formatted("\"list_vendors\":\"%@\",", {addToHit(kVXSavedVendors)});
    }
    body += formatted("\"type_action\":\"%@\",", {type});
    body += formatted("\"vxpid\":\"%@\",", {resolveUserID(state)});
    body += formatted("\"vxua\":\"%@\"",
                      {VXCoreVariables::sharedInstance().getData(kVXPredefinedVariable_UserAgent)});
    body += "}}";
    return body;
}

} // namespace

std::string addToHit(std::string_view list) {
    const ConsentKind kind = kindOfList(list);
    const std::string_view prefix = consentNames(kind).prefix;
    const std::string keys = SavedEntries::text(list).value_or("");
    std::string ids;
    bool first = true; // not whether `ids` is empty: a key may be nothing but its prefix
    forEachPiece(keys, ';', [&](std::string_view key) {
        if (consentKind(key) != kind || !SavedEntries::isAccepted(key))
            return;
        if (!std::exchange(first, false))
            ids += ',';
        ids += removingAll(key.substr(prefix.size()), prefix);
    });
    return ids;
}

// The identifier that the application gave may be the name of a variable.
std::optional<std::string> resolveUserID(const EngineState& state) {
    const VXCoreVariables& core = VXCoreVariables::sharedInstance();
    if (!state.userID)
        return core.getData(kVXPredefinedVariable_SDKID);
    if (state.vxInstance) {
        if (auto value = state.vxInstance->getPermanentData(*state.userID))
            return value;
        if (auto value = VXPredefinedVariables::sharedInstance().getData(*state.userID))
            return value;
    }
    if (auto value = core.getData(*state.userID))
        return value;
    return state.userID;
}

void sendConsentHitToVX(const EngineState& state, std::int32_t action, std::string_view type) {
    state.send(
        kVXNotification_HTTPRequest,
        Notification::UserInfo{{std::string(kVXUserInfo_URLKey),
                                platform().hosts.consentCollector + "/privacy-consent/"},
                               {std::string(kVXUserInfo_POSTData), bodyOf(state, action, type)},
                               {std::string(kVXUserInfo_ResponseKey), "Consent"}});
}

} // namespace vx
