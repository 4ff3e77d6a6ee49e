// Whose turn it is to be posted, and what an answer means for the request.

#include "vxprivacy/services/core/HTTPSender.h"

#include <algorithm>
#include <string>

#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/services/core/URLPolicy.h"

namespace vx::services {

namespace {

constexpr std::size_t kMostRequests = 1000;
constexpr std::size_t kMostUnderWay = 8;
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
    if (url && namesNoHost(*url))
        return; // the services said so when they began
    if (!url || !mayRequest(*url)) {
        shared_.logger.log("Nothing is posted to " + (url ? *url : "nowhere") +
                               ": it is neither https nor on this machine",
                           kLogProblem);
        return;
    }
    StoreTransaction transaction(shared_.store);
    dropOldest();
    const std::uint64_t now = shared_.clock.nowMilliseconds();
    hurry(outbox_.requests(), *url, now);
    outbox_.add(*url, body ? *body : "", now);
    transaction.commit();
}

void HTTPSender::dropOldest() {
    auto& requests = outbox_.requests();
    while (requests.size() >= kMostRequests) {
        shared_.logger.log("Too many requests wait to be posted; the oldest is dropped",
                           kLogProblem);
        const auto idle = std::ranges::find(requests, false, &WaitingRequest::underWay);
        outbox_.remove(idle->number); // there is one, as few are under way
    }
}

void HTTPSender::sendDue() {
    dropOutdated();
    const std::uint64_t now = shared_.clock.nowMilliseconds();
    for (WaitingRequest* request : next())
        if (underWay_ < kMostUnderWay && waitLeft(*request, now) == 0)
            post(*request);
}

std::vector<WaitingRequest*> HTTPSender::next() {
    auto requests = inTurn(outbox_.requests(), shared_.clock.nowMilliseconds());
    std::erase_if(requests,
                  [this](const WaitingRequest* request) { return !outbox_.mayBePosted(*request); });
    return requests;
}

void HTTPSender::dropOutdated() {
    const std::uint64_t now = shared_.clock.nowMilliseconds();
    const auto isOutdated = [&](const WaitingRequest& request) {
        return request.created < now && now - request.created > kLongestAge;
    };
    auto& requests = outbox_.requests();
    auto old = std::ranges::find_if(requests, isOutdated);
    if (old == requests.end())
        return;
    StoreTransaction transaction(shared_.store);
    for (; old != requests.end(); old = std::ranges::find_if(requests, isOutdated)) {
        shared_.logger.log("A request to " + old->url +
                               " could not be posted for 7 days and is dropped",
                           kLogProblem);
        outbox_.remove(old->number);
    }
    transaction.commit();
}

void HTTPSender::post(WaitingRequest& request) {
    request.underWay = true;
    ++underWay_;
    shared_.http.submit({request.url, request.body, ""},
                        [this, number = request.number](const HTTPResponse& response) {
                            settle(number, response);
                        });
}

void HTTPSender::settle(std::uint64_t number, const HTTPResponse& response) {
    --underWay_;
    WaitingRequest* request = outbox_.find(number);
    if (!request)
        return;
    request->underWay = false;
    if (isDelivered(response.status))
        return outbox_.remove(number);
    if (isRefused(response.status)) {
        shared_.logger.log("A request to " + request->url + " was refused (" + outcome(response) +
                               ") and is dropped",
                           kLogProblem);
        return outbox_.remove(number);
    }
    const std::uint64_t now = shared_.clock.nowMilliseconds();
    const std::uint64_t age = now > request->created ? now - request->created : 0;
    const std::uint64_t wait = retries_.wait(request->attempts + 1, age, response.retryAfter);
    shared_.logger.log("A request to " + request->url + " failed (" + outcome(response) +
                           ") and is tried again in " + std::to_string(wait) + " ms",
                       kLogNote);
    request->letsPass = response.status == 500;
    request->mayHurry = response.retryAfter.count() <= 0;
    outbox_.postpone(number, now + wait);
}

std::optional<std::chrono::milliseconds> HTTPSender::timeToNext() {
    if (underWay_ == kMostUnderWay)
        return {};
    const std::uint64_t now = shared_.clock.nowMilliseconds();
    std::optional<std::chrono::milliseconds> shortest;
    for (const WaitingRequest* request : next()) {
        const std::chrono::milliseconds left(waitLeft(*request, now));
        shortest = std::min(shortest.value_or(left), left);
    }
    return shortest;
}

} // namespace vx::services
