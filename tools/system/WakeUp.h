#pragma once

#include <chrono>

#include "tools/system/Descriptor.h"

namespace vx::tools::system {

/// Lets one thread wait for a descriptor to become readable, and any other thread end the wait.
class WakeUp {
public:
    WakeUp();

    /// Ends the wait under way, or the next one. Any thread.
    void signal() const;
    /// Waits for `signal`, for `fd` or for `patience`; says whether `fd` can be read (or has
    /// ended).
    bool waitFor(int fd, std::chrono::milliseconds patience) const;

    /// For those who wait for more than that: can be read when `signal` was called since the last
    /// `clear`.
    int descriptor() const { return event_.get(); }
    void clear() const;

private:
    Descriptor event_;
};

} // namespace vx::tools::system
