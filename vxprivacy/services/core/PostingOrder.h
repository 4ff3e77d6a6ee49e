#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <vector>

// Whose turn it is among the requests that wait to be posted. All times are milliseconds since
// 1970.

namespace vx::services {

/// A request that waits to be posted.
struct WaitingRequest {
    std::uint64_t number; // in this process
    std::int64_t id;      // in the file; 0 while it is not there
    std::string url;
    std::string body;
    std::uint64_t created;
    std::uint64_t nextTry;
    int attempts = 0;
    bool underWay = false;
    bool letsPass = false; // while it waits, later ones may go first
    bool mayHurry = false; // it waits on our own account: the server asked for nothing

    bool isStored() const { return id != 0; }
};

/// Oldest first.
using WaitingRequests = std::list<WaitingRequest>;

/// How long the request still waits for its next try; 0: it is due.
std::uint64_t waitLeft(const WaitingRequest& request, std::uint64_t now);

/// The requests whose turn it is at their addresses, those under way left out; some of them wait
/// for their next try. An address has one turn at a time: its oldest request's, and while that one
/// lets others pass, also the next one's.
std::vector<WaitingRequest*> inTurn(WaitingRequests& requests, std::uint64_t now);

/// Makes due what waits for `url`, where no server asked for the wait: a new request to `url`
/// comes, and would wait as well.
void hurry(WaitingRequests& requests, std::string_view url, std::uint64_t now);

} // namespace vx::services
