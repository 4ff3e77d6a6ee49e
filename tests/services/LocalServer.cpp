#include "tests/services/LocalServer.h"

#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vx::services::test {

LocalServer::LocalServer(Handler handler, std::unique_ptr<httplib::Server> server)
    : server_(std::move(server)) {
    const auto answer = [this, handler = std::move(handler)](const httplib::Request& request,
                                                             httplib::Response& response) {
        {
            const std::lock_guard lock(mutex_);
            requests_.push_back(request);
        }
        handler(request, response);
    };
    server_->Get(".*", answer);
    server_->Post(".*", answer);
    server_->set_keep_alive_timeout(1);
    port_ = server_->bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    while (!server_->is_running())
        std::this_thread::yield();
}

LocalServer::~LocalServer() {
    server_->stop();
    thread_.join();
}

std::vector<httplib::Request> LocalServer::requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
}

SilentServer::SilentServer() : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* plain = reinterpret_cast<sockaddr*>(&address);
    ::bind(socket_, plain, size);
    ::listen(socket_, 16);
    ::getsockname(socket_, plain, &size);
    port_ = ntohs(address.sin_port);
}

SilentServer::~SilentServer() {
    ::close(socket_);
}

} // namespace vx::services::test
