#pragma once

#include <sys/resource.h>

// What this process cannot have for a while. The program's own `pthread_create` and `getaddrinfo`
// stand before the system's, for libcurl too.

namespace vx::services::test {

/// No descriptor can be opened.
class NoDescriptors {
public:
    NoDescriptors();
    ~NoDescriptors();
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

private:
    rlimit before_{};
};

/// This thread cannot start another, as at the limit of threads, which does not hold for root.
class NoThreads {
public:
    NoThreads();
    ~NoThreads();
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;
};

/// Looking a name up takes until the end of this object.
class SilentNameServer {
public:
    SilentNameServer();
    ~SilentNameServer();
    SilentNameServer(const SilentNameServer&) = delete;
    SilentNameServer& operator=(const SilentNameServer&) = delete;

    /// Whether the present one was asked for a name.
    static bool isAsked();
};

} // namespace vx::services::test
