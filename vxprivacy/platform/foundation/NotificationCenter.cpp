#include "vxprivacy/platform/foundation/NotificationCenter.h"

#include <algorithm>

namespace vx {

NotificationObserver::~NotificationObserver() = default;

NotificationCenter::~NotificationCenter() = default;

void NotificationCenter::addObserver(std::string_view name, NotificationObserver& observer) {
    const std::pair added(std::string(name), &observer);
    if (std::ranges::find(observers_, added) == observers_.end())
        observers_.push_back(added);
}

void NotificationCenter::removeObserver(NotificationObserver& observer) {
    std::erase_if(observers_, [&](const auto& added) { return added.second == &observer; });
}

void NotificationCenter::post(const Notification& notification) {
    const auto observers = observers_; // who hears it may add and remove observers
    for (const auto& [name, observer] : observers)
        if (name == notification.name)
            observer->onNotificationReceived(notification);
}

} // namespace vx
