#pragma once

#include "vxprivacy/platform/foundation/Notification.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx {

/// Hears the notifications that it was added for.
class NotificationObserver {
public:
    virtual ~NotificationObserver();

    /// Called while the notification is posted, on the poster's thread.
    virtual void onNotificationReceived(const Notification& notification) = 0;
};

/// Carries notifications between the module, the core library's services and the tag SDK, at once
/// and on the caller's thread. Used on the application's thread only.
class NotificationCenter {
public:
    virtual ~NotificationCenter();

    /// From now on `observer` hears every notification of exactly this name, each one once however
    /// often it was added. It must be removed before it dies.
    virtual void addObserver(std::string_view name, NotificationObserver& observer);
    /// From now on `observer` hears nothing.
    virtual void removeObserver(NotificationObserver& observer);

    /// Calls the observers of the notification's name in the order in which they were added.
    virtual void post(const Notification& notification);

private:
    std::vector<std::pair<std::string, NotificationObserver*>> observers_;
};

} // namespace vx
