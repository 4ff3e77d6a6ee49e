#pragma once

#include <string>
#include <string_view>

#include "tools/system/Descriptor.h"

namespace vx::tests {

/// A connection to a server on loopback, for what no HTTP client sends.
class RawConnection {
public:
    /// `authority` is 127.0.0.1:PORT. Throws std::system_error when it cannot connect.
    explicit RawConnection(const std::string& authority);

    /// False when the server takes no more.
    bool send(std::string_view bytes);
    /// What is sent ends here.
    void endSending();
    /// The next `size` bytes, or what comes until the end.
    std::string receive(std::size_t size = std::string::npos);

private:
    tools::system::Descriptor socket_;
};

} // namespace vx::tests
