#pragma once

#include <utility>

#include <unistd.h>

namespace vx::tools::system {

/// A file descriptor that is closed with its owner.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~Descriptor() { reset(); }

    int get() const { return fd_; }
    void reset() {
        if (fd_ >= 0)
            ::close(std::exchange(fd_, -1));
    }

private:
    int fd_;
};

} // namespace vx::tools::system
