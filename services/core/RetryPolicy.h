#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>

namespace vx::services {

/// No wait is longer, whatever a server asks for; in milliseconds.
inline constexpr std::uint64_t kLongestWait = 24ull * 60 * 60 * 1000;

/// How long to wait before a request that failed is tried again.
class RetryPolicy {
public:
    /// Milliseconds to wait after `attempts` failures: a random time up to a bound that starts at
    /// one second, doubles with every failure and ends at an hour, but never less than the server
    /// asked for.
    std::uint64_t wait(int attempts, const std::optional<std::uint64_t>& asked);

private:
    std::mt19937_64 random_{std::random_device{}()};
};

/// What a Retry-After header (RFC 9110, section 10.2.3) asks for, in milliseconds from `now`, which
/// is in milliseconds since 1970. Absent when the header is empty or cannot be read.
std::optional<std::uint64_t> retryAfter(const std::string& header, std::uint64_t now);

} // namespace vx::services
