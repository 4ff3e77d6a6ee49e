#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/services/core/Transfers.h"

namespace vx::services {

/// Sends requests on one worker thread, all at the same time, and hands the answers back on the
/// application's thread. What is under way when it is destroyed is dropped.
///
/// The worker loads libcurl for the first request, but after the first `poll` or 50 ms after the
/// first need, so that the application's start is not slowed down by it. Where libcurl cannot be
/// used, every request ends with an error, the log says so once, and later requests try again, at
/// pauses that grow from a second to a minute. Where no thread can be started, the log says so
/// once, requests wait, and each `poll` tries again.
class HTTPClient {
public:
    HTTPClient(std::string userAgent, Logger& logger);
    ~HTTPClient();
    HTTPClient(const HTTPClient&) = delete;
    HTTPClient& operator=(const HTTPClient&) = delete;

    /// Starts `request`; `done` is called by a later `poll`, once, whatever comes of it.
    void submit(HTTPRequest request, Transfer::Done done);
    /// Calls what became done, on this thread.
    void poll();
    /// Why the last request failed that did, with its address; empty: none did. Application's
    /// thread.
    const std::string& lastProblem() const { return lastProblem_; }

    /// `wakeUp` is called on the worker's thread when there is something to poll.
    void setWakeUp(std::function<void()> wakeUp);
    /// Makes the worker call `wakeUp` after `time`, in place of an earlier such wish; absent: not.
    void wakeAfter(std::optional<std::chrono::milliseconds> time);

private:
    using Steady = std::chrono::steady_clock;
    struct Order {
        HTTPRequest request;
        Transfer::Done done;
    };

    void note(const std::string& url, const HTTPResponse& response);
    bool startWorker();
    void run();
    void waitForFirstPoll();
    void load();
    std::unique_ptr<Transfers> makeTransfers(std::string& problem) const;
    void start(Order order);
    void ring();
    void rest();
    std::vector<Order> takeOrders();
    void deliver(std::function<void()> result);
    void wakeApplication();
    void wakeWorker();

    const std::string userAgent_;
    Logger& logger_;
    std::atomic<bool> stopping_ = false;
    std::string lastProblem_; // the application's thread's
    // The worker's; of a libcurl that cannot be used.
    std::string problem_;
    std::chrono::milliseconds pause_{};
    Steady::time_point nextLoad_{};
    std::mutex mutex_;
    std::vector<Order> orders_;                  // guarded by mutex_
    std::vector<std::function<void()>> results_; // guarded by mutex_; for the application's thread
    std::optional<Steady::time_point> alarm_;    // guarded by mutex_; when to wake the application
    bool polled_ = false;                        // guarded by mutex_
    std::unique_ptr<Transfers> transfers_; // guarded by mutex_; null while libcurl cannot be used
    std::condition_variable wake_;         // ends the rest of a worker without transfers
    std::mutex wakeUpMutex_;
    std::function<void()> wakeUp_; // guarded by wakeUpMutex_
    std::thread worker_;           // started by the first need for it
    bool workerMissing_ = false;   // it could not be started
};

} // namespace vx::services
