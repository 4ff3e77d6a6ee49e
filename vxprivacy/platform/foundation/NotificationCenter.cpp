#include "vxprivacy/platform/foundation/NotificationCenter.h"

#include <algorithm>
#include <iterator>

namespace vx {

NotificationObserver::~NotificationObserver() = default;

NotificationCenter::~NotificationCenter() = default;

void NotificationCenter::addObserver(std::string_view name, NotificationObserver& observer) {
    const std::lock_guard lock(mutex_);
    std::erase_if(observers_, [](const Added& added) { return added.life.expired(); });
    const auto isSame = [&](const Added& added) {
        return added.observer == &observer && added.name == name;
    };
    if (std::ranges::none_of(observers_, isSame))
        observers_.push_back({std::string(name), &observer, observer.life_});
}

void NotificationCenter::removeObserver(NotificationObserver& observer) {
    const std::lock_guard lock(mutex_);
    std::erase_if(observers_, [&](const Added& added) { return added.observer == &observer; });
}

// Unlocked while they are called, for they may add and remove observers, and post.
void NotificationCenter::post(const Notification& notification) {
    for (const Added& added : observersOf(notification.name))
        if (stillHears(added))
            added.observer->onNotificationReceived(notification);
}

std::vector<NotificationCenter::Added>
NotificationCenter::observersOf(std::string_view name) const {
    const std::lock_guard lock(mutex_);
    std::vector<Added> found;
    std::ranges::copy_if(observers_, std::back_inserter(found),
                         [&](const Added& added) { return added.name == name; });
    return found;
}

bool NotificationCenter::stillHears(const Added& added) const {
    const std::lock_guard lock(mutex_);
    return !added.life.expired() && std::ranges::any_of(observers_, [&](const Added& present) {
        return present.observer == added.observer && present.name == added.name;
    });
}

} // namespace vx
