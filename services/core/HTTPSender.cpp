#include "services/core/HTTPSender.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "services/core/URLPolicy.h"
#include "vxprivacy/platform/core/VXNotifications.h"

namespace vx::services {

namespace {

constexpr std::size_t kMostRequests = 1000;
constexpr std::uint64_t kLongestAge = 7ull * 24 * 60 * 60 * 1000; // milliseconds

bool isDelivered(long status) {
    return status >= 200 && status < 300;
}

bool isRefused(long status) {
    return status >= 400 && status < 500 && status != 429;
}

std::string outcome(const HTTPResponse& response) {
    return response.status == 0 ? response.error : "HTTP " + std::to_string(response.status);
}

} // namespace

HTTPSender::HTTPSender(const Shared& shared, Outbox& outbox, NotificationCenter& notifications)
    : shared_(shared), outbox_(outbox), notifications_(notifications) {
    notifications_.addObserver(kVXNotification_HTTPRequest, *this);
}

HTTPSender::~HTTPSender() {
    notifications_.removeObserver(*this);
}

void HTTPSender::onNotificationReceived(const Notification& notification) {
    if (!notification.userInfo)
        return;
    const std::string* url = notification.userInfo->find(kVXUserInfo_URLKey);
    const std::string* body = notification.userInfo->find(kVXUserInfo_POSTData);
    if (!url || !mayRequest(*url)) {
        shared_.logger.log("Nothing is posted to " + (url ? *url : "nowhere") +
                               ": it is neither https nor on this machine",
                           4);
        return;
    }
    StoreTransaction transaction(shared_.store);
    dropOldest();
    outbox_.add(*url, body ? *body : "", shared_.clock.nowMilliseconds());
    transaction.commit();
}

void HTTPSender::dropOldest() {
    while (outbox_.requests().size() >= kMostRequests) {
        shared_.logger.log("Too many requests wait to be posted; the oldest is dropped", 4);
        outbox_.remove(outbox_.requests().front().number);
    }
}

void HTTPSender::sendDue() {
    dropOutdated();
    for (Outbox::Request* request : next())
        if (waitLeft(*request) == 0)
            post(*request);
}

// The requests whose turn it is at their addresses; some of them wait for their next try.
std::vector<Outbox::Request*> HTTPSender::next() {
    std::vector<Outbox::Request*> next;
    std::set<std::string_view> taken;
    for (Outbox::Request& request : outbox_.requests()) {
        if (!request.isStored() || taken.contains(request.url))
            continue;
        if (!request.underWay)
            next.push_back(&request);
        if (!request.letsPass || waitLeft(request) == 0)
            taken.insert(request.url);
    }
    return next;
}

void HTTPSender::dropOutdated() {
    const std::uint64_t now = shared_.clock.nowMilliseconds();
    const auto isOutdated = [&](const Outbox::Request& request) {
        return request.created < now && now - request.created > kLongestAge;
    };
    auto& requests = outbox_.requests();
    auto old = std::ranges::find_if(requests, isOutdated);
    if (old == requests.end())
        return;
    StoreTransaction transaction(shared_.store);
    for (; old != requests.end(); old = std::ranges::find_if(requests, isOutdated)) {
        shared_.logger.log(
            "A request to " + old->url + " could not be posted for 7 days and is dropped", 4);
        outbox_.remove(old->number);
    }
    transaction.commit();
}

void HTTPSender::post(Outbox::Request& request) {
    request.underWay = true;
    shared_.http.submit({request.url, request.body, ""},
                        [this, number = request.number](const HTTPResponse& response) {
                            settle(number, response);
                        });
}

void HTTPSender::settle(std::uint64_t number, const HTTPResponse& response) {
    Outbox::Request* request = outbox_.find(number);
    if (!request)
        return;
    request->underWay = false;
    if (isDelivered(response.status))
        return outbox_.remove(number);
    if (isRefused(response.status)) {
        shared_.logger.log("A request to " + request->url + " was refused (" + outcome(response) +
                               ") and is dropped",
                           4);
        return outbox_.remove(number);
    }
    const std::uint64_t now = shared_.clock.nowMilliseconds();
    const std::uint64_t wait =
        retries_.wait(request->attempts + 1, retryAfter(response.retryAfter, now));
    shared_.logger.log("A request to " + request->url + " failed (" + outcome(response) +
                           ") and is tried again in " + std::to_string(wait) + " ms",
                       3);
    request->letsPass = response.status == 500;
    outbox_.postpone(number, now + wait);
}

std::optional<std::chrono::milliseconds> HTTPSender::timeToNext() {
    std::optional<std::chrono::milliseconds> shortest;
    for (const Outbox::Request* request : next()) {
        const std::chrono::milliseconds left(waitLeft(*request));
        shortest = std::min(shortest.value_or(left), left);
    }
    return shortest;
}

// A wait longer than any that is ever set comes from a clock that was put back since.
std::uint64_t HTTPSender::waitLeft(const Outbox::Request& request) const {
    const std::uint64_t now = shared_.clock.nowMilliseconds();
    const std::uint64_t left = request.nextTry > now ? request.nextTry - now : 0;
    return left > kLongestWait ? 0 : left;
}

} // namespace vx::services
