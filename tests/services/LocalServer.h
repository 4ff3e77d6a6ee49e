#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <httplib.h>

namespace vx::services::test {

/// A real HTTP server on loopback, on a thread of its own.
class LocalServer {
public:
    /// Answers a request; called on the server's threads.
    using Handler = std::function<void(const httplib::Request&, httplib::Response&)>;

    explicit LocalServer(Handler handler, std::unique_ptr<httplib::Server> server =
                                              std::make_unique<httplib::Server>());
    ~LocalServer();
    LocalServer(const LocalServer&) = delete;
    LocalServer& operator=(const LocalServer&) = delete;

    int port() const { return port_; }
    std::string host() const { return "http://127.0.0.1:" + std::to_string(port_); }
    /// The requests that were answered so far, oldest first.
    std::vector<httplib::Request> requests();

private:
    std::unique_ptr<httplib::Server> server_;
    std::mutex mutex_;
    std::vector<httplib::Request> requests_; // guarded by mutex_
    int port_ = 0;
    std::thread thread_;
};

/// A server that takes connections and never says anything.
class SilentServer {
public:
    SilentServer();
    ~SilentServer();
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    std::string host() const { return "http://127.0.0.1:" + std::to_string(port_); }

private:
    int socket_ = -1;
    int port_ = 0;
};

} // namespace vx::services::test
