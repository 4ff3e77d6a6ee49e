#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "vxprivacy/platform/foundation/NotificationCenter.h"
#include "vxprivacy/services/core/Outbox.h"
#include "vxprivacy/services/core/RetryPolicy.h"
#include "vxprivacy/services/core/Shared.h"

namespace vx::services {

/// Posts what the notification of an HTTP request asks for, and does not give up easily.
///
/// A request is in the store before it is posted, and leaves it when the server took it (2xx),
/// refused it (4xx, 429 excepted), or when it is seven days old. All else is tried again after a
/// growing random wait: no answer, 429, 5xx, and also a redirect, which a post does not follow and
/// which says nothing about the request. At most 1,000 requests are kept; the oldest that are not
/// under way go first. At most eight are under way.
///
/// Requests to one address go one after the other in the order in which they were made, because a
/// later choice replaces an earlier one: while the oldest waits for its next try, those behind it
/// wait too. Only one that was answered with 500, and so may itself be at fault, lets others pass.
/// A new request makes those due that wait before it, unless the server asked for their wait.
///
/// While the store cannot be written, requests are posted from memory.
///
/// A request that was posted just before the process died is posted again: the server may get it
/// twice, but it gets it. So it may when two processes share a store, as each posts what waited
/// when it started.
///
/// Waiting times are kept in the store and measured on the platform's clock. `sendDue` looks at it;
/// calling that late only delays requests.
class HTTPSender : private NotificationObserver {
public:
    HTTPSender(const Shared& shared, Outbox& outbox, NotificationCenter& notifications);
    ~HTTPSender() override;
    HTTPSender(const HTTPSender&) = delete;
    HTTPSender& operator=(const HTTPSender&) = delete;

    /// Posts the requests that are due, as many as may be under way.
    void sendDue();
    /// How long until a request can be posted; absent: none waits, or an answer has to come first.
    std::optional<std::chrono::milliseconds> timeToNext();

private:
    void onNotificationReceived(const Notification& notification) override;
    void dropOldest();
    void dropOutdated();
    void post(WaitingRequest& request);
    void settle(std::uint64_t number, const HTTPResponse& response);
    std::vector<WaitingRequest*> next();

    Shared shared_;
    Outbox& outbox_;
    NotificationCenter& notifications_;
    RetryPolicy retries_;
    std::size_t underWay_ = 0;
};

} // namespace vx::services
