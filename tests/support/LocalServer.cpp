#include "tests/support/LocalServer.h"

#include <stdexcept>
#include <utility>

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

namespace vx::tests {

LocalServer::LocalServer(Handler handler, tools::system::LoopbackServer::Make make)
    : handler_(std::move(handler)),
      server_([this](httplib::Server& server) { takeAll(server); }, std::move(make)) {
    if (!server_.start(0))
        throw std::runtime_error("no port to listen on");
}

void LocalServer::takeAll(httplib::Server& server) {
    const auto take = [this](const httplib::Request& request, httplib::Response& response) {
        {
            const std::lock_guard lock(mutex_);
            requests_.push_back(request);
        }
        handler_(request, response);
    };
    server.Get(".*", take);
    server.Post(".*", take);
}

std::vector<httplib::Request> LocalServer::requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
}

SilentServer::SilentServer() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* plain = reinterpret_cast<sockaddr*>(&address);
    ::bind(socket_.get(), plain, size);
    ::listen(socket_.get(), 16);
    ::getsockname(socket_.get(), plain, &size);
    port_ = ntohs(address.sin_port);
}

bool SilentServer::awaitConnection() const {
    pollfd connected{socket_.get(), POLLIN, 0};
    return ::poll(&connected, 1, 30'000) == 1;
}

} // namespace vx::tests
