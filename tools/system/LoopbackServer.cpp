#include "tools/system/LoopbackServer.h"

#include <chrono>
#include <utility>

#include <sys/socket.h>

#include "tools/system/BoundedServer.h"

namespace vx::tools::system {

namespace {

// The library's own options share a port with whoever else listens on it.
void claimAlone(socket_t socket) {
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

void configure(httplib::Server& server) {
    server.set_socket_options(claimAlone);
    server.set_keep_alive_max_count(1); // an idle connection would hold up `stop`
    server.set_keep_alive_timeout(1);
}

} // namespace

std::unique_ptr<httplib::Server> LoopbackServer::bounded() {
    return std::make_unique<BoundedServer>();
}

LoopbackServer::LoopbackServer(Routes routes, Make make)
    : routes_(std::move(routes)), make_(std::move(make)) {}

LoopbackServer::~LoopbackServer() {
    stop();
}

bool LoopbackServer::start(int port) {
    auto server = make_();
    configure(*server);
    routes_(*server);
    const std::string host = "127.0.0.1";
    const int bound = port == 0                          ? server->bind_to_any_port(host)
                      : server->bind_to_port(host, port) ? port
                                                         : -1;
    if (bound <= 0)
        return false;
    port_ = bound;
    server_ = std::move(server);
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    while (!server_->is_running()) // `stop` does nothing before
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return true;
}

void LoopbackServer::stop() {
    if (!server_)
        return;
    server_->stop();
    thread_.join();
    server_.reset();
}

std::string LoopbackServer::address() const {
    return "http://127.0.0.1:" + std::to_string(port_);
}

} // namespace vx::tools::system
