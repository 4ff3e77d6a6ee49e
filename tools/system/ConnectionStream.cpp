#include "tools/system/ConnectionStream.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <string_view>

#include <poll.h>
#include <sys/socket.h>

namespace vx::tools::system {

namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr std::size_t kLongestHead = 64u << 10;
constexpr milliseconds kHeadPatience = 10s;
constexpr milliseconds kPatience = 5s;
constexpr milliseconds kFarewell = 2s;

milliseconds until(SteadyClock::time_point moment) {
    return std::max(0ms, std::chrono::ceil<milliseconds>(moment - SteadyClock::now()));
}

} // namespace

// The library, too, takes an empty line for the head's end only where it ends with both characters.
ConnectionStream::Head ConnectionStream::readHead() {
    const std::string_view end = "\n\r\n";
    const auto deadline = SteadyClock::now() + kHeadPatience;
    std::size_t searched = 0;
    while (received_.find(end, searched) == std::string::npos) {
        if (received_.size() > kLongestHead)
            return Head::TooLong;
        searched = received_.size() - std::min(received_.size(), end.size() - 1);
        const ssize_t size = receive(until(deadline));
        if (size < 0)
            return received_.empty() || until(deadline) > 0ms ? Head::None : Head::TooSlow;
        if (size == 0) // the library says what is wrong with a part of a head
            return received_.empty() ? Head::None : Head::Whole;
    }
    return Head::Whole;
}

void ConnectionStream::finish() {
    ::shutdown(socket(), SHUT_WR);
    const auto deadline = SteadyClock::now() + kFarewell;
    while (until(deadline) > 0ms && receive(until(deadline)) > 0)
        received_.clear();
}

bool ConnectionStream::is_readable() const {
    return given_ < received_.size() || connection_.await(POLLIN, kPatience);
}

bool ConnectionStream::is_writable() const {
    return connection_.await(POLLOUT, kPatience);
}

ssize_t ConnectionStream::read(char* bytes, std::size_t size) {
    if (given_ == received_.size()) {
        received_.clear();
        given_ = 0;
        if (const ssize_t received = receive(kPatience); received <= 0)
            return received;
    }
    const std::string_view next = std::string_view(received_).substr(given_, size);
    if (framing_ && !framing_->take(next))
        return -1;
    std::memcpy(bytes, next.data(), next.size());
    given_ += next.size();
    return static_cast<ssize_t>(next.size());
}

ssize_t ConnectionStream::write(const char* bytes, std::size_t size) {
    for (std::size_t sent = 0; sent < size;) {
        const ssize_t now =
            ::send(socket(), bytes + sent, size - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (now >= 0)
            sent += static_cast<std::size_t>(now);
        else if (errno != EAGAIN || !connection_.await(POLLOUT, kPatience))
            return -1;
    }
    return static_cast<ssize_t>(size);
}

// Appends to what was received.
ssize_t ConnectionStream::receive(milliseconds patience) {
    std::array<char, 16u << 10> bytes;
    ssize_t size = 0;
    while ((size = ::recv(socket(), bytes.data(), bytes.size(), MSG_DONTWAIT)) < 0)
        if (errno != EAGAIN || patience == 0ms || !connection_.await(POLLIN, patience))
            return -1;
    received_.append(bytes.data(), static_cast<std::size_t>(size));
    return size;
}

} // namespace vx::tools::system
