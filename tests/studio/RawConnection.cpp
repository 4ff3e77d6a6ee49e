#include "tests/studio/RawConnection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tools/system/Files.h"

namespace vx::tests {

RawConnection::RawConnection(const std::string& authority)
    : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port =
        htons(static_cast<std::uint16_t>(std::stoi(authority.substr(authority.rfind(':') + 1))));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket_.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        throw std::system_error(errno, std::generic_category(), "connecting to " + authority);
}

bool RawConnection::send(std::string_view bytes) {
    return tools::system::writeAll(socket_.get(), bytes);
}

void RawConnection::endSending() {
    ::shutdown(socket_.get(), SHUT_WR);
}

std::string RawConnection::receive(std::size_t size) {
    std::string text;
    std::array<char, 4096> bytes;
    ssize_t now = 0;
    while (text.size() < size && (now = ::read(socket_.get(), bytes.data(),
                                               std::min(bytes.size(), size - text.size()))) > 0)
        text.append(bytes.data(), static_cast<std::size_t>(now));
    return text;
}

} // namespace vx::tests
