#include "services/core/RetryPolicy.h"

#include <algorithm>

#include "vxprivacy/platform/foundation/Text.h"

#include <curl/curl.h>

namespace vx::services {

namespace {

constexpr std::uint64_t kSecond = 1000;
constexpr std::uint64_t kLongestBackoff = 60 * 60 * kSecond;

std::uint64_t backoffBound(int attempts) {
    const int doublings = std::clamp(attempts - 1, 0, 12); // 2^12 seconds are more than an hour
    return std::min(kSecond << doublings, kLongestBackoff);
}

} // namespace

std::uint64_t RetryPolicy::wait(int attempts, const std::optional<std::uint64_t>& asked) {
    std::uniform_int_distribution<std::uint64_t> backoff(0, backoffBound(attempts));
    return std::min(std::max(backoff(random_), asked.value_or(0)), kLongestWait);
}

std::optional<std::uint64_t> retryAfter(const std::string& header, std::uint64_t now) {
    if (const std::optional<std::int64_t> seconds = decimalInteger(header))
        return static_cast<std::uint64_t>(std::clamp<std::int64_t>(*seconds, 0, 1'000'000)) *
               kSecond;
    const time_t date = header.empty() ? -1 : curl_getdate(header.c_str(), nullptr);
    if (date < 0)
        return {};
    const std::uint64_t milliseconds = static_cast<std::uint64_t>(date) * kSecond;
    return milliseconds > now ? milliseconds - now : 0;
}

} // namespace vx::services
