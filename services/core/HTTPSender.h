#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "services/core/Outbox.h"
#include "services/core/RetryPolicy.h"
#include "services/core/Shared.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"

namespace vx::services {

/// Posts what the notification of an HTTP request asks for, and does not give up easily.
///
/// A request is in the store before it is posted, and leaves it when the server took it (2xx),
/// refused it (4xx, 429 excepted), or when it is seven days old. All else is tried again after a
/// growing random wait: no answer, 429, 5xx, and also a redirect, which a post does not follow and
/// which says nothing about the request. At most 1,000 requests are kept; the oldest go first.
///
/// Requests to one address go one after the other in the order in which they were made, because a
/// later choice replaces an earlier one: while the oldest waits for its next try, those behind it
/// wait too. Only one that was answered with 500, and so may itself be at fault, lets others pass.
///
/// A request that was posted just before the process died is posted again: the server may get it
/// twice, but it gets it. So it may when two processes share a store, as each posts what waited
/// when it started.
///
/// Waiting times are kept in the store and measured on the platform's clock, which `sendDue` looks
/// at; that it is called late delays a request and does nothing else.
class HTTPSender : private NotificationObserver {
public:
    HTTPSender(const Shared& shared, Outbox& outbox, NotificationCenter& notifications);
    ~HTTPSender() override;
    HTTPSender(const HTTPSender&) = delete;
    HTTPSender& operator=(const HTTPSender&) = delete;

    /// Posts the stored requests that are due.
    void sendDue();
    /// How long until a request that waits is due; absent: none waits.
    std::optional<std::chrono::milliseconds> timeToNext();

private:
    void onNotificationReceived(const Notification& notification) override;
    void dropOldest();
    void dropOutdated();
    void post(Outbox::Request& request);
    void settle(std::uint64_t number, const HTTPResponse& response);
    std::vector<Outbox::Request*> next();
    std::uint64_t waitLeft(const Outbox::Request& request) const;

    Shared shared_;
    Outbox& outbox_;
    NotificationCenter& notifications_;
    RetryPolicy retries_;
};

} // namespace vx::services
