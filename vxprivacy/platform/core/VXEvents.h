#pragma once

#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"

namespace vx {

// The engine sends and hears notifications through these two, which it owns and is the parent of.
// Application's thread. Neither owns its parent or a notification center: both must outlive it.

/// Owner of a `VXEventSender`.
class VXPRIVACY_EXPORT IVXEventSenderDelegate {
public:
    virtual ~IVXEventSenderDelegate();

    /// To be called by whoever replaces the notification center: from now on notifications are sent
    /// through `center`. Nothing in the module calls it.
    virtual void changeNotificationCenter(NotificationCenter& center) = 0;
};

/// Owner of a `VXEventListener`: hears, as a `NotificationObserver`, what the listener listens to.
class VXPRIVACY_EXPORT IVXEventListenerDelegate : public NotificationObserver {
public:
    /// As in `IVXEventSenderDelegate`. It does not move a listener, which goes on listening at the
    /// platform's center.
    virtual void changeNotificationCenter(NotificationCenter& center) = 0;
};

/// Sends notifications through the platform's notification center or the one it was given.
class VXPRIVACY_EXPORT VXEventSender {
public:
    /// Null: none. Kept for whoever asks; sending does not need it.
    void setParent(IVXEventSenderDelegate* parent) { parent_ = parent; }
    IVXEventSenderDelegate* parent() const { return parent_; }

    /// Sends through `center` from now on, which must outlive it.
    void setNotificationCenter(NotificationCenter& center) { center_ = &center; }

    /// Posts `notification`; when this returns, everybody has heard it (see `NotificationCenter`).
    void send(const Notification& notification) const;

private:
    IVXEventSenderDelegate* parent_ = nullptr;
    NotificationCenter* center_ = nullptr; // null: the platform's
};

/// Makes its parent hear notifications of the platform's center. What it listened to stays in force
/// when the listener ends or another takes its place: the parent hears it until the parent removes
/// itself from the center, which it must before it dies.
class VXPRIVACY_EXPORT VXEventListener {
public:
    /// Null: none.
    void setParent(IVXEventListenerDelegate* parent) { parent_ = parent; }

    /// The parent hears every later notification of exactly this name, once however often this is
    /// called. Does nothing without a parent.
    void listen(std::string_view name) const;

private:
    IVXEventListenerDelegate* parent_ = nullptr;
};

} // namespace vx
