#pragma once

#include <functional>
#include <memory>
#include <string>
#include <thread>

#include <httplib.h>

namespace vx::tools::system {

/// An HTTP server on 127.0.0.1 with a thread of its own, from `start` to `stop`.
class LoopbackServer {
public:
    /// Puts the routes into a server that is about to listen.
    using Routes = std::function<void(httplib::Server&)>;
    /// Makes that server, of the kind that is wanted.
    using Make = std::function<std::unique_ptr<httplib::Server>()>;

    /// One of those that strangers cannot exhaust.
    static std::unique_ptr<httplib::Server> bounded();

    explicit LoopbackServer(Routes routes, Make make = bounded);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    /// Listens on `port`, 0 for any free one; false when that port cannot be had.
    bool start(int port);
    /// Closes the socket, so that connecting is refused, and waits for the requests under way.
    void stop();

    bool running() const { return server_ != nullptr; }
    /// The port of the last `start`; 0 before it.
    int port() const { return port_; }
    /// "http://127.0.0.1:PORT".
    std::string address() const;

private:
    Routes routes_;
    Make make_;
    std::unique_ptr<httplib::Server> server_;
    std::thread thread_;
    int port_ = 0;
};

} // namespace vx::tools::system
