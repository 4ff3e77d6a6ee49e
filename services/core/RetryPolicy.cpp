#include "services/core/RetryPolicy.h"

#include <algorithm>
#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

#include "vxprivacy/platform/foundation/Text.h"

namespace vx::services {

namespace {

constexpr std::uint64_t kSecond = 1000;
constexpr std::uint64_t kLongestBackoff = 60 * 60 * kSecond;

std::uint64_t backoffBound(int attempts) {
    const int doublings = std::clamp(attempts - 1, 0, 12); // 2^12 seconds are more than an hour
    return std::min(kSecond << doublings, kLongestBackoff);
}

// The three spellings of a date in HTTP (RFC 9110, section 5.6.7).
constexpr const char* kDates[] = {"%a, %d %b %Y %H:%M:%S GMT", "%a, %d-%b-%y %H:%M:%S GMT",
                                  "%a %b %d %H:%M:%S %Y"};

// In seconds since 1970.
std::optional<std::time_t> readDate(const std::string& text) {
    for (const char* spelling : kDates) {
        std::istringstream stream(text);
        stream.imbue(std::locale::classic()); // whose names are English
        std::tm date{};
        if (stream >> std::get_time(&date, spelling))
            return timegm(&date);
    }
    return {};
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
    const std::optional<std::time_t> date = readDate(header);
    if (!date)
        return {};
    const std::uint64_t milliseconds =
        static_cast<std::uint64_t>(std::max<std::time_t>(*date, 0)) * kSecond;
    return milliseconds > now ? milliseconds - now : 0;
}

} // namespace vx::services
