// Switching the tag SDK, and hearing of configuration changes.

#include "vxprivacy/engine/VXMobilePrivacy.h"

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"

#include <utility>

namespace vx {

void VXMobilePrivacy::enableSDK() {
    StoreTransaction transaction = VXUserDefaults::transaction();
    if (switchSDKOn()) {
        VXUserDefaults::saveInfoToUserDefaults("1", kVXPrivacyConsent);
        saveTimeOfConsent();
    }
    transaction.commit();
}

void VXMobilePrivacy::disableSDK() {
    StoreTransaction transaction = VXUserDefaults::transaction();
    if (switchSDKOff()) {
        VXUserDefaults::saveInfoToUserDefaults("0", kVXPrivacyConsent);
        saveTimeOfConsent();
    }
    transaction.commit();
}

bool VXMobilePrivacy::switchSDKOn() {
    if (privacyState_ == 1)
        return false;
    privacyState_ = 1;
    VXLogger::sharedInstance().logMessage("Zentrix's SDK is now enabled", 1);
    Notification start{std::string(kVXNotification_StartingTheSDK), this, {}};
    if (const std::string entries = categoriesToStartWith(); !entries.empty())
        start.userInfo = Notification::UserInfo{{std::string(kVXUserInfo_POSTData), entries}};
    senderDelegate_->send(start);
    return true;
}

bool VXMobilePrivacy::switchSDKOff() {
    if (privacyState_ == 2)
        return false;
    privacyState_ = 2;
    VXLogger::sharedInstance().logMessage(
        "Zentrix's SDK is now disabled, all information you will send it will be ignored", 1);
    senderDelegate_->send({std::string(kVXNotification_StoppingTheSDK), this, {}});
    return true;
}

void VXMobilePrivacy::changeNotificationCenter(NotificationCenter& center) {
    senderDelegate_->setNotificationCenter(center);
}

void VXMobilePrivacy::onNotificationReceived(const Notification& notification) {
    if (notification.name.find(kVXNotification_ConfigurationChanged) == std::string::npos)
        return;
    StoreTransaction transaction = VXUserDefaults::transaction();
    const auto asksFor = [&](std::string_view key) {
        return notification.userInfo && notification.userInfo->contains(key);
    };
    if (asksFor(kVXUserInfo_ResetSave)) {
        VXUserDefaults::saveInfoToUserDefaults("1", kVXShouldDisplayPrivacyCenter);
        resetSavedConsent();
    }
    // Without a callback a significant change does not even arm the display flag, deliberately.
    if (callback_)
        reportChange(asksFor(kVXUserInfo_SignificantChanges));
    transaction.commit();
}

// Both operations are asked for with a colon and sent without one, deliberately.
void VXMobilePrivacy::reportChange(bool significant) {
    if (significant) {
        VXUserDefaults::saveInfoToUserDefaults("1", kVXShouldDisplayPrivacyCenter);
        if (const auto callback = callbackAnswering("significantChangesInPrivacy:"))
            callback->significantChangesInPrivacy();
    }
    if (const auto callback = callbackAnswering("consentCategoryChanged:"))
        callback->consentCategoryChanged();
}

void VXMobilePrivacy::registerCallback(std::shared_ptr<VXPrivacyCallbacks> callback) {
    callback_ = std::move(callback);
}

// Shared, so that it outlives the call when the callback replaces itself.
std::shared_ptr<VXPrivacyCallbacks>
VXMobilePrivacy::callbackAnswering(std::string_view operation) const {
    return callback_ && callback_->respondsTo(operation) ? callback_ : nullptr;
}

} // namespace vx
