#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include <httplib.h>

#include "tools/system/Descriptor.h"
#include "tools/system/LoopbackServer.h"

namespace vx::tests {

/// A server on loopback that answers every GET and POST in one way and keeps the requests.
class LocalServer {
public:
    /// Answers a request; called on the server's threads.
    using Handler = std::function<void(const httplib::Request&, httplib::Response&)>;

    /// Listens at once. `make` makes the server, where it is to be of another kind.
    explicit LocalServer(Handler handler, tools::system::LoopbackServer::Make make =
                                              tools::system::LoopbackServer::bounded);

    int port() const { return server_.port(); }
    std::string host() const { return server_.address(); }
    /// The requests that were answered so far, oldest first.
    std::vector<httplib::Request> requests();

private:
    void takeAll(httplib::Server& server);

    Handler handler_;
    std::mutex mutex_;
    std::vector<httplib::Request> requests_; // guarded by mutex_
    tools::system::LoopbackServer server_;   // last: its threads use all else
};

/// A server that takes connections and never says anything.
class SilentServer {
public:
    SilentServer();

    std::string host() const { return "http://127.0.0.1:" + std::to_string(port_); }
    /// Waits until somebody is connected; false when nobody is within half a minute.
    bool awaitConnection() const;

private:
    tools::system::Descriptor socket_;
    int port_ = 0;
};

} // namespace vx::tests
