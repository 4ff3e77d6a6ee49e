#pragma once

#include <cstdint>
#include <queue>
#include <random>
#include <unordered_map>
#include <utility>
#include <vector>

#include "vxprivacy/services/core/PostingOrder.h"
#include "vxprivacy/services/core/RetryPolicy.h"

namespace vx::bench {

inline constexpr std::uint64_t kSecond = 1000; // milliseconds, as all times here
inline constexpr std::uint64_t kMinute = 60 * kSecond;
inline constexpr std::uint64_t kHour = 60 * kMinute;

/// What happens to the devices and their collector.
struct Scenario {
    const char* name;
    std::uint32_t devices;
    double savesPerDay;    // of one device
    std::uint64_t failure; // how long a request takes that fails
    bool alwaysRunning;    // else 10 minutes at a time, with pauses of up to 8 hours
    std::uint64_t down;    // when the outage begins
    std::uint64_t up;      // when it ends
    std::uint64_t end;     // of all
};

/// What the collector saw.
struct Outcome {
    std::vector<std::uint32_t> requests; // in each second
    std::vector<std::uint64_t> arrivals; // of the backlog, since the end of the outage; in order
    std::uint32_t backlog = 0;           // saves of the outage
    std::uint32_t heldBack = 0;          // saves after the outage that were not posted at once
};

/// Devices that save at random moments, in virtual time. Each has the services' own retry policy
/// and order of posting, and one collector.
class Fleet {
public:
    explicit Fleet(const Scenario& scenario);

    Outcome run();

private:
    using Moment = std::pair<std::uint64_t, std::uint32_t>; // when which device has something to do
    struct Device {
        services::WaitingRequests requests;
        std::uint64_t runsUntil = 0;
    };

    void save(std::uint32_t number);
    void postDue(std::uint32_t number);
    bool post(services::WaitingRequest& request);
    void planNext(std::uint32_t number, Device& device);
    bool isDown() const { return now_ >= scenario_.down && now_ < scenario_.up; }

    const Scenario scenario_;
    Outcome outcome_;
    services::RetryPolicy retries_;
    std::mt19937_64 random_{1};
    std::unordered_map<std::uint32_t, Device> waiting_; // the devices with requests that wait
    std::priority_queue<Moment, std::vector<Moment>, std::greater<>> moments_;
    std::uint64_t now_ = 0;
    std::uint64_t saves_ = 0;
};

} // namespace vx::bench
