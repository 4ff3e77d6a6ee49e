#include "vxprivacy/services/core/RetryPolicy.h"

#include <algorithm>

namespace vx::services {

namespace {

constexpr std::uint64_t kSecond = 1000;
constexpr int kQuickTries = 2;
// A request is no longer tried quickly where finding out that it failed took long: those of all
// devices that a hanging collector holds would come back together.
constexpr std::uint64_t kQuickAge = 5 * kSecond;
constexpr std::uint64_t kFirstLongBound = 4 * 60 * 60 * kSecond;

std::uint64_t boundAfter(int attempts, std::uint64_t age) {
    if (attempts <= kQuickTries && age < kQuickAge)
        return attempts <= 1 ? kSecond : 2 * kSecond;
    const int doublings = std::clamp(attempts - kQuickTries - 1, 0, 3); // 2^3 * 4 h exceed a day
    return std::min(kFirstLongBound << doublings, kLongestWait);
}

// In milliseconds, no longer than any wait may be.
std::uint64_t bounded(std::chrono::seconds asked) {
    constexpr std::int64_t longest = kLongestWait / kSecond;
    return static_cast<std::uint64_t>(std::clamp<std::int64_t>(asked.count(), 0, longest)) *
           kSecond;
}

} // namespace

std::uint64_t RetryPolicy::wait(int attempts, std::uint64_t age, std::chrono::seconds asked) {
    std::uniform_int_distribution<std::uint64_t> own(0, boundAfter(attempts, age));
    return std::max(own(random_), bounded(asked));
}

} // namespace vx::services
