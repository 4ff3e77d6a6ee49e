#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/Notification.h"

namespace vx {

/// Hears the notifications that it was added for. One that dies hears nothing more, removed or not.
class VXPRIVACY_EXPORT NotificationObserver {
public:
    NotificationObserver() = default;
    // It is known by its address.
    NotificationObserver(const NotificationObserver&) = delete;
    NotificationObserver& operator=(const NotificationObserver&) = delete;
    virtual ~NotificationObserver();

    /// Called while the notification is posted, on the poster's thread. It must not throw. It may
    /// post, and may add and remove observers, itself included.
    virtual void onNotificationReceived(const Notification& notification) = 0;

private:
    friend class NotificationCenter;
    struct Life {};

    std::shared_ptr<Life> life_ = std::make_shared<Life>(); // ends with the observer
};

/// The door that carries notifications between the module, the core library's services and the tag
/// SDK, at once and on the caller's thread. As it stands it is ready for use; a center of the
/// application's own keeps the rules below, or passes the calls on.
///
/// Posting is for the application's thread, and an observer dies there. Observers may be added and
/// removed on any thread, for the engine adds itself where it is first asked for.
///
///     NotificationCenter center;
///     center.addObserver("tea", cook);
///     center.post({"tea"});      // cook has heard it when this returns
///     center.post({"teapot"});   // cook hears nothing: names are compared whole
class VXPRIVACY_EXPORT NotificationCenter {
public:
    virtual ~NotificationCenter();

    /// From now on `observer` hears every notification of exactly this name, each one once however
    /// often it was added. The center does not own it, and forgets it when it dies.
    virtual void addObserver(std::string_view name, NotificationObserver& observer);
    /// From now on `observer` hears nothing, whatever names it was added for, not even of the
    /// notification being posted.
    virtual void removeObserver(NotificationObserver& observer);

    /// Calls the observers of the notification's name in the order in which they were added, and
    /// returns when all have heard it. Nobody listening is no error. An observer that is added
    /// meanwhile hears the next one.
    virtual void post(const Notification& notification);

private:
    struct Added {
        std::string name;
        NotificationObserver* observer;
        std::weak_ptr<NotificationObserver::Life> life;
    };

    std::vector<Added> observersOf(std::string_view name) const;
    bool stillHears(const Added& added) const;

    mutable std::mutex mutex_;
    std::vector<Added> observers_; // guarded by mutex_
};

} // namespace vx
