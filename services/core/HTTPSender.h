#pragma once

#include "services/core/Outbox.h"
#include "services/core/RetryPolicy.h"
#include "services/core/Shared.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace vx::services {

/// Posts what the notification of an HTTP request asks for, and does not give up easily.
///
/// A request is in the store before it is posted, and leaves it when the server took it (2xx),
/// refused it (4xx, 429 excepted), or when it is seven days old. All else is tried again after a
/// growing random wait: no answer, 429, 5xx, and also a redirect, which a post does not follow and
/// which says nothing about the request. At most 1,000 requests are kept; the oldest go first.
///
/// A request that was posted just before the process died is posted again: the server may get it
/// twice, but it gets it.
///
/// Waiting times are kept in the store and measured on the platform's clock, which `sendDue` looks
/// at; that it is called late delays a request and does nothing else.
class HTTPSender : private NotificationObserver {
public:
    HTTPSender(const Shared& shared, Outbox& outbox, NotificationCenter& notifications);
    ~HTTPSender() override;
    HTTPSender(const HTTPSender&) = delete;
    HTTPSender& operator=(const HTTPSender&) = delete;

    /// Posts the stored requests that are due, in the order in which they were made.
    void sendDue();
    /// How long until a request that waits is due; absent: none waits.
    std::optional<std::chrono::milliseconds> timeToNext();

private:
    void onNotificationReceived(const Notification& notification) override;
    void dropOldest();
    void dropOutdated();
    void post(Outbox::Request& request);
    void settle(std::uint64_t number, const HTTPResponse& response);
    bool isWaiting(const Outbox::Request& request) const;
    std::uint64_t waitLeft(const Outbox::Request& request) const;

    Shared shared_;
    Outbox& outbox_;
    NotificationCenter& notifications_;
    RetryPolicy retries_;
    int underWay_ = 0;
};

} // namespace vx::services
