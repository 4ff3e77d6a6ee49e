#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "services/core/Transfer.h"

namespace vx::services {

/// Sends requests on one worker thread, all at the same time, and hands the answers back on the
/// application's thread. What is under way when it is destroyed is dropped.
class HTTPClient {
public:
    explicit HTTPClient(std::string userAgent);
    ~HTTPClient();
    HTTPClient(const HTTPClient&) = delete;
    HTTPClient& operator=(const HTTPClient&) = delete;

    /// Starts `request`; `done` is called by a later `poll`, once, whatever comes of it.
    void submit(HTTPRequest request, Transfer::Done done);
    /// Calls what became done, on this thread.
    void poll();

    /// `wakeUp` is called on the worker's thread when there is something to poll.
    void setWakeUp(std::function<void()> wakeUp);
    /// Makes the worker call `wakeUp` after `time`, in place of an earlier such wish; absent: not.
    void wakeAfter(std::optional<std::chrono::milliseconds> time);

private:
    using Steady = std::chrono::steady_clock;
    using Transfers = std::map<CURL*, std::unique_ptr<Transfer>>;
    struct Order {
        HTTPRequest request;
        Transfer::Done done;
    };
    struct Result {
        HTTPResponse response;
        Transfer::Done done;
    };

    void run();
    void startOrders(CURLM* multi, Transfers& transfers);
    void finishTransfers(CURLM* multi, Transfers& transfers);
    void deliver(Transfer& transfer);
    int timeToNextWakeUp();
    void wakeApplication();
    void wakeWorker();

    const std::string userAgent_;
    std::atomic<bool> stopping_ = false;
    std::mutex mutex_;
    std::vector<Order> orders_;               // guarded by mutex_
    std::vector<Result> results_;             // guarded by mutex_
    std::optional<Steady::time_point> alarm_; // guarded by mutex_
    CURLM* multi_ = nullptr;                  // guarded by mutex_; null while there is no worker
    std::mutex wakeUpMutex_;
    std::function<void()> wakeUp_; // guarded by wakeUpMutex_
    std::thread worker_;           // started by the first need for it
};

} // namespace vx::services
