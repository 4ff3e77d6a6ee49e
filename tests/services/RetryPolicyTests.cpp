#include <algorithm>
#include <chrono>

#include <gtest/gtest.h>

#include "tests/services/SenderTest.h"
#include "vxprivacy/services/core/RetryPolicy.h"

namespace vx::services::test {

using namespace std::chrono_literals;

// What bench/outage shows of a million devices rests on these bounds.
TEST(RetryPolicy, ASecondOrTwoWhileYoungThenHoursUpToADay) {
    struct Case {
        int attempts;
        std::uint64_t age, bound;
    };
    RetryPolicy policy;
    for (const auto& [attempts, age, bound] : {Case{1, 0, kSecond},
                                               {1, 5 * kSecond - 1, kSecond},
                                               {1, 5 * kSecond, 4 * kHour},
                                               {2, 3 * kSecond, 2 * kSecond},
                                               {2, 5 * kSecond, 4 * kHour},
                                               {3, 0, 4 * kHour},
                                               {4, kHour, 8 * kHour},
                                               {5, kHour, 16 * kHour},
                                               {6, kHour, 24 * kHour},
                                               {1'000'000, kHour, 24 * kHour}}) {
        std::uint64_t shortest = bound;
        std::uint64_t longest = 0;
        for (int i = 0; i < 1000; ++i) {
            const std::uint64_t wait = policy.wait(attempts, age, 0s);
            shortest = std::min(shortest, wait);
            longest = std::max(longest, wait);
        }
        EXPECT_LT(shortest, bound / 10) << attempts;
        EXPECT_LE(longest, bound) << attempts;
        EXPECT_GT(longest, bound - bound / 10) << attempts;
    }
}

TEST(RetryPolicy, AServerMayAskForADay) {
    RetryPolicy policy;
    EXPECT_EQ(policy.wait(1, 0, 5h), 5 * kHour);
    EXPECT_EQ(policy.wait(1, 0, 48h), 24 * kHour);
    EXPECT_EQ(policy.wait(1, 0, std::chrono::seconds::max()), 24 * kHour);
    EXPECT_LE(policy.wait(1, 0, -5h), kSecond);
}

} // namespace vx::services::test
