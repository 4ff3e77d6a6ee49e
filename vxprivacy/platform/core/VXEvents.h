#pragma once

#include "vxprivacy/platform/foundation/NotificationCenter.h"

#include <string_view>

namespace vx {

/// Owner of a `VXEventSender`.
class IVXEventSenderDelegate {
public:
    virtual ~IVXEventSenderDelegate();

    /// From now on notifications are to be sent through `center`, which must outlive the sender.
    virtual void changeNotificationCenter(NotificationCenter& center) = 0;
};

/// Owner of a `VXEventListener`: hears what the listener listens to.
class IVXEventListenerDelegate : public NotificationObserver {
public:
    virtual void changeNotificationCenter(NotificationCenter& center) = 0;
};

/// Sends notifications through the platform's notification center or the one it was given.
class VXEventSender {
public:
    void setParent(IVXEventSenderDelegate* parent) { parent_ = parent; }
    IVXEventSenderDelegate* parent() const { return parent_; }

    void setNotificationCenter(NotificationCenter& center) { center_ = &center; }

    void send(const Notification& notification) const;

private:
    IVXEventSenderDelegate* parent_ = nullptr;
    NotificationCenter* center_ = nullptr; // null: the platform's
};

/// Makes its parent hear notifications. What it listened to stays in force for the parent's life,
/// also when another listener takes its place.
class VXEventListener {
public:
    void setParent(IVXEventListenerDelegate* parent) { parent_ = parent; }

    /// The parent hears every later notification of exactly this name. Nothing without a parent.
    void listen(std::string_view name) const;

private:
    IVXEventListenerDelegate* parent_ = nullptr;
};

} // namespace vx
