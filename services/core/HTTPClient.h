#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "services/core/Transfers.h"
#include "vxprivacy/platform/core/Doors.h"

namespace vx::services {

/// Sends requests on one worker thread, all at the same time, and hands the answers back on the
/// application's thread. What is under way when it is destroyed is dropped.
///
/// Start-up has the machine for itself: the first request waits for the first `poll`, at most 50
/// ms. Where libcurl cannot be used, every request ends with an error, and the log says so once.
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
    struct Result {
        HTTPResponse response;
        Transfer::Done done;
    };

    void run();
    void waitForStartUp();
    void transferOrders(const CurlLibrary& curl);
    void refuseOrders(const std::string& problem);
    void setTransfers(Transfers* transfers);
    std::vector<Order> takeOrders();
    void deliver(HTTPResponse response, Transfer::Done done);
    int timeToNextWakeUp();
    void wakeApplication();
    void wakeWorker();

    const std::string userAgent_;
    Logger& logger_;
    std::atomic<bool> stopping_ = false;
    std::mutex mutex_;
    std::vector<Order> orders_;               // guarded by mutex_
    std::vector<Result> results_;             // guarded by mutex_
    std::string problem_;                     // guarded by mutex_; to be logged
    std::optional<Steady::time_point> alarm_; // guarded by mutex_
    bool polled_ = false;                     // guarded by mutex_
    bool woken_ = false;                      // guarded by mutex_
    Transfers* transfers_ = nullptr;          // guarded by mutex_; null while the worker has none
    std::condition_variable wake_;            // wakes a worker that has none
    std::mutex wakeUpMutex_;
    std::function<void()> wakeUp_; // guarded by wakeUpMutex_
    std::thread worker_;           // started by the first need for it
};

} // namespace vx::services
