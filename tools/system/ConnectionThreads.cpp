#include "tools/system/ConnectionThreads.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>

namespace vx::tools::system {

namespace {

constexpr rlim_t kMostThreads = 64;

// Connections must give way before descriptors run out: those served and those coming of two
// servers have half of them.
std::size_t affordableThreads() {
    rlimit descriptors{};
    if (::getrlimit(RLIMIT_NOFILE, &descriptors) != 0)
        return kMostThreads;
    return std::clamp<rlim_t>(descriptors.rlim_cur / 8, 2, kMostThreads);
}

} // namespace

ConnectionThreads::ConnectionThreads() : most_(affordableThreads()) {}

ConnectionThreads::Connection::Connection(ConnectionThreads& threads, int socket)
    : threads_(threads), socket_(socket) {
    const std::lock_guard lock(threads_.mutex_);
    threads_.served_.push_back(this);
    if (threads_.ends_)
        cutOff();
}

ConnectionThreads::Connection::~Connection() {
    const std::lock_guard lock(threads_.mutex_);
    threads_.served_.remove(this);
}

bool ConnectionThreads::Connection::await(short events, std::chrono::milliseconds patience) {
    const auto setWaiting = [&](bool waits) {
        const std::lock_guard lock(threads_.mutex_);
        waits_ = waits;
        if (waits && threads_.ends_)
            cutOff();
        if (waits)
            threads_.makeRoom();
        return !isCutOff_;
    };
    if (!setWaiting(true))
        return setWaiting(false);
    pollfd awaited = {socket_, events, 0};
    const int ready = ::poll(&awaited, 1, static_cast<int>(patience.count()));
    return setWaiting(false) && ready > 0;
}

void ConnectionThreads::Connection::cutOff() {
    isCutOff_ = true;
    ::shutdown(socket_, SHUT_RDWR); // wakes who waits on it
}

void ConnectionThreads::enqueue(std::function<void()> serve) {
    std::unique_lock lock(mutex_);
    hasRoom_.wait(lock, [&] { return coming_.size() < most_; });
    coming_.push_back(std::move(serve));
    hasWork_.notify_one();
    if (idle_ < coming_.size() && threads_.size() < most_)
        try {
            threads_.emplace_back([this] { work(); });
        } catch (const std::system_error&) { // the machine has no more; there are those before
        }
    makeRoom();
}

void ConnectionThreads::shutdown() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
        for (Connection* each : served_)
            if (each->waits_)
                each->cutOff();
        hasWork_.notify_all();
    }
    for (std::thread& thread : threads_)
        thread.join();
}

void ConnectionThreads::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        ++idle_;
        hasWork_.wait(lock, [&] { return !coming_.empty() || ends_; });
        --idle_;
        if (coming_.empty())
            return;
        const std::function<void()> serve = std::move(coming_.front());
        coming_.pop_front();
        hasRoom_.notify_one();
        lock.unlock();
        serve();
        lock.lock();
    }
}

// Those that are cut off already leave their threads to as many.
void ConnectionThreads::makeRoom() {
    if (threads_.size() < most_ || idle_ >= coming_.size())
        return;
    auto leaving = static_cast<std::size_t>(
        std::ranges::count_if(served_, [](const Connection* each) { return each->isCutOff_; }));
    for (auto each = served_.begin(); each != served_.end() && leaving < coming_.size(); ++each)
        if ((*each)->waits_ && !(*each)->isCutOff_) {
            (*each)->cutOff();
            ++leaving;
        }
}

} // namespace vx::tools::system
