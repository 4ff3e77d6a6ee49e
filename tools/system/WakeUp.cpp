#include "tools/system/WakeUp.h"

#include <cstdint>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace vx::tools::system {

WakeUp::WakeUp() : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void WakeUp::signal() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(event_.get(), &one, sizeof one);
}

bool WakeUp::waitFor(int fd, std::chrono::milliseconds patience) const {
    pollfd waits[] = {{fd, POLLIN, 0}, {event_.get(), POLLIN, 0}};
    if (poll(waits, 2, static_cast<int>(patience.count())) <= 0)
        return false;
    clear();
    return waits[0].revents != 0;
}

void WakeUp::clear() const {
    std::uint64_t signals = 0;
    [[maybe_unused]] const ssize_t count = ::read(event_.get(), &signals, sizeof signals);
}

} // namespace vx::tools::system
