#include "vxprivacy/services/core/PostingOrder.h"

#include <algorithm>
#include <set>

#include "vxprivacy/services/core/RetryPolicy.h"

namespace vx::services {

// A wait longer than any that is ever set comes from a clock that was put back since.
std::uint64_t waitLeft(const WaitingRequest& request, std::uint64_t now) {
    const std::uint64_t left = request.nextTry > now ? request.nextTry - now : 0;
    return left > kLongestWait ? 0 : left;
}

std::vector<WaitingRequest*> inTurn(WaitingRequests& requests, std::uint64_t now) {
    std::vector<WaitingRequest*> turns;
    std::set<std::string_view> taken;
    for (WaitingRequest& request : requests) {
        if (taken.contains(request.url))
            continue;
        if (!request.underWay)
            turns.push_back(&request);
        if (!request.letsPass || waitLeft(request, now) == 0)
            taken.insert(request.url);
    }
    return turns;
}

void hurry(WaitingRequests& requests, std::string_view url, std::uint64_t now) {
    for (WaitingRequest& request : requests)
        if (request.mayHurry && request.url == url)
            request.nextTry = std::min(request.nextTry, now);
}

} // namespace vx::services
