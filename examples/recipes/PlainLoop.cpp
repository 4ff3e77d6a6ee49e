#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

#include "vxprivacy/services/core/Services.h"

namespace {

class Loop {
public:
    void post(std::function<void()> task) { // on any thread
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
        changed_.notify_one();
    }
    void runOnce() { // on the application's thread; sleeps until there is something to do
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !tasks_.empty(); });
        const auto task = std::move(tasks_.front());
        tasks_.pop_front();
        lock.unlock();
        task();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> tasks_; // guarded by mutex_
};

} // namespace

void run(vx::services::Services& services) {
    Loop loop; // outlives the wake-up
    services.setWakeUp([&] { loop.post([&] { services.poll(); }); });
    services.poll();
    for (int task = 0; task < 100; ++task)
        loop.runOnce();
    services.setWakeUp(nullptr); // once this returns, the worker calls nobody
}
