// The consent beacon: one small JSON object a view or save, handed to the core library to post.

#include "vxprivacy/engine/VXMobilePrivacy.h"

#include "vxprivacy/engine/ConsentKey.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/core/VXVariables.h"
#include "vxprivacy/platform/foundation/Text.h"

#include <utility>

namespace vx {

namespace {

constexpr std::int32_t kViewAction = 1;

std::int32_t configurationVersion() {
    const auto file = VXConfigurationFileFactory::sharedInstance().getConfigurationFile("privacy");
    return file ? file->version() : 0;
}

// The accepted ones of the saved entries, without their prefix, joined with commas.
std::string acceptedIDs(ConsentKind kind) {
    const auto [prefix, list] = consentNames(kind);
    const std::string keys = VXUserDefaults::retrieveInfoFromUserDefaults(list).value_or("");
    std::string ids;
    bool first = true; // not whether `ids` is empty: a key may be nothing but its prefix
    forEachPiece(keys, ';', [&](std::string_view key) {
        if (consentKind(key) != kind || VXUserDefaults::retrieveInfoFromUserDefaults(key) != "1")
            return;
        if (!std::exchange(first, false))
            ids += ',';
        ids += removingAll(key.substr(prefix.size()), prefix);
    });
    return ids;
}

std::string acceptedCategoriesAndFeatures() {
    std::string ids = acceptedIDs(ConsentKind::Category);
    // With features but no categories the list begins with a comma, deliberately.
    if (const auto features = acceptedIDs(ConsentKind::Feature); !features.empty())
        ids.append(",").append(features);
    return ids;
}

} // namespace

void VXMobilePrivacy::viewConsent() {
    sendConsentHit(kViewAction, kVXTypeActionViewPrivacyCenter);
}

void VXMobilePrivacy::sendConsentHit(std::int32_t action, std::string_view type) {
    sendConsentHitToVX(action, type);
}

void VXMobilePrivacy::sendConsentHitToVX(std::int32_t action, std::string_view type) {
    // Values are put in as they are: one that contains a quote breaks the JSON, deliberately.
    std::string body = "{\"privacyBeacon\":{";
    body += formatted("\"id_vx\":\"0\",\"id_privacy\":%d,\"site\":%d,\"version\":\"%d\",",
                      {privacyID_, clientSiteID_, configurationVersion()});
    if (action == kViewAction) {
        body += "\"privacy_action\":\"V\",";
    } else {
        body += formatted("\"privacy_action\":\"%@\",",
                          {VXUserDefaults::retrieveInfoFromUserDefaults(kVXPrivacyConsent)});
        body += formatted("\"list_categories\":\"%@\",", {acceptedCategoriesAndFeatures()});
        body += formatted("\"list_vendors\":\"%@\",", {acceptedIDs(ConsentKind::Vendor)});
    }
    body += formatted("\"type_action\":\"%@\",", {type});
    body += formatted("\"vxpid\":\"%@\",", {resolveUserID()});
    body += formatted("\"vxua\":\"%@\"",
                      {VXCoreVariables::sharedInstance().getData(kVXPredefinedVariable_UserAgent)});
    body += "}}";
    senderDelegate_->send(
        {std::string(kVXNotification_HTTPRequest), this,
         Notification::UserInfo{{std::string(kVXUserInfo_URLKey),
                                 platform().hosts.consentCollector + "/privacy-consent/"},
                                {std::string(kVXUserInfo_POSTData), body},
                                {std::string(kVXUserInfo_ResponseKey), "Consent"}}});
}

std::optional<std::string> VXMobilePrivacy::resolveUserID() const {
    const VXCoreVariables& core = VXCoreVariables::sharedInstance();
    if (!userID_)
        return core.getData(kVXPredefinedVariable_SDKID);
    if (vxInstance_) {
        if (auto value = vxInstance_->getPermanentData(*userID_))
            return value;
        if (auto value = VXPredefinedVariables::sharedInstance().getData(*userID_))
            return value;
    }
    if (auto value = core.getData(*userID_))
        return value;
    return userID_;
}

} // namespace vx
