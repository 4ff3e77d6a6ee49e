#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

#include <httplib.h>

namespace vx::tools::system {

/// The threads that serve a server's connections, each one at a time; made as they are needed. When
/// all are taken and another connection comes, the oldest of those that wait for their peer is cut
/// off. So peers that say nothing, or read nothing, keep nobody waiting however many they are.
class ConnectionThreads final : public httplib::TaskQueue {
public:
    /// A connection while it is served. Its socket is the caller's, and outlives it.
    class Connection {
    public:
        Connection(ConnectionThreads& threads, int socket);
        ~Connection();
        Connection(const Connection&) = delete;
        Connection& operator=(const Connection&) = delete;

        int socket() const { return socket_; }
        /// Waits for one of poll's `events`; false when none comes within `patience`, or when the
        /// connection was cut off.
        bool await(short events, std::chrono::milliseconds patience);

    private:
        friend ConnectionThreads;

        void cutOff();

        ConnectionThreads& threads_;
        const int socket_;
        bool waits_ = false;
        bool isCutOff_ = false;
    };

    ConnectionThreads();

    /// `serve` serves a connection.
    void enqueue(std::function<void()> serve) override;
    /// Cuts off whoever waits and joins the threads.
    void shutdown() override;

private:
    void work();
    void makeRoom();

    const std::size_t most_; // threads, and as many connections that wait for one
    std::mutex mutex_;       // guards everything below
    std::condition_variable hasWork_;
    std::condition_variable hasRoom_;
    std::vector<std::thread> threads_;
    std::size_t idle_ = 0;                     // of them
    std::deque<std::function<void()>> coming_; // connections that no thread serves yet
    std::list<Connection*> served_;            // oldest first
    bool ends_ = false;
};

} // namespace vx::tools::system
