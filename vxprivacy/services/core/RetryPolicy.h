#pragma once

#include <chrono>
#include <cstdint>
#include <random>

namespace vx::services {

/// No wait is longer, whatever a server asks for; in milliseconds.
inline constexpr std::uint64_t kLongestWait = 24ull * 60 * 60 * 1000;

/// How long to wait before a request that failed is tried again.
///
/// The waits are so long because a collector that comes back after an outage meets the backlog of
/// all devices at once: whatever share of it comes back within an hour comes on top of the usual
/// requests. bench/outage shows it.
class RetryPolicy {
public:
    /// Milliseconds to wait after `attempts` failures of a request that was made `age` milliseconds
    /// ago: a random time up to a bound, but never less than the server asked for; `asked` is not
    /// above 0 where it asked for nothing. The bound is one second after the first failure and two
    /// after the second, if the request is younger than five seconds; else four hours, which double
    /// with each failure after the third and end at a day.
    std::uint64_t wait(int attempts, std::uint64_t age, std::chrono::seconds asked);

private:
    std::mt19937_64 random_{std::random_device{}()};
};

} // namespace vx::services
