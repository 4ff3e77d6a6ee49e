#include "vxprivacy/services/sdk/TagSDK.h"

#include <utility>

#include "vxprivacy/platform/core/VXNotifications.h"

namespace vx::services {

TagSDK::TagSDK(NotificationCenter& center, Sink sink) : center_(center), sink_(std::move(sink)) {
    center_.addObserver(kVXNotification_StartingTheSDK, *this);
    center_.addObserver(kVXNotification_StoppingTheSDK, *this);
}

TagSDK::~TagSDK() {
    center_.removeObserver(*this);
}

void TagSDK::addPermanentData(std::string_view key, std::string_view value) {
    const auto found = permanentData_.find(key);
    if (found == permanentData_.end())
        permanentData_.emplace(key, value);
    else
        found->second = value;
}

void TagSDK::removePermanentData(std::string_view key) {
    if (const auto found = permanentData_.find(key); found != permanentData_.end())
        permanentData_.erase(found);
}

std::optional<std::string> TagSDK::getPermanentData(std::string_view key) const {
    const auto found = permanentData_.find(key);
    return found == permanentData_.end() ? std::nullopt : std::optional(found->second);
}

bool TagSDK::accept(std::string_view data) {
    if (!on_) {
        ++dropped_;
        return false;
    }
    ++sent_;
    sink_({data, permanentData_});
    return true;
}

void TagSDK::onNotificationReceived(const Notification& notification) {
    on_ = notification.name == kVXNotification_StartingTheSDK;
    if (!on_)
        return;
    const std::string* data =
        notification.userInfo ? notification.userInfo->find(kVXUserInfo_POSTData) : nullptr;
    startData_ = data ? *data : "";
}

} // namespace vx::services
