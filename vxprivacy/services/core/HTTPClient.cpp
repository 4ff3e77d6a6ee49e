// The worker thread: it takes orders, moves transfers forward and wakes the application.

#include "vxprivacy/services/core/HTTPClient.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace vx::services {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kLongestRest = 60s;
constexpr std::chrono::milliseconds kLongestStartUp = 50ms;
constexpr std::chrono::milliseconds kFirstLoadPause = 1s;
constexpr std::chrono::milliseconds kLongestLoadPause = 1min;

} // namespace

HTTPClient::HTTPClient(std::string userAgent, Logger& logger)
    : userAgent_(std::move(userAgent)), logger_(logger) {}

HTTPClient::~HTTPClient() {
    stopping_ = true;
    if (!worker_.joinable())
        return;
    wakeWorker();
    worker_.join();
}

void HTTPClient::submit(HTTPRequest request, Transfer::Done done) {
    auto noteAndDone = [this, url = request.url,
                        done = std::move(done)](const HTTPResponse& response) {
        note(url, response);
        done(response);
    };
    {
        const std::lock_guard lock(mutex_);
        orders_.push_back({std::move(request), std::move(noteAndDone)});
    }
    wakeWorker();
}

void HTTPClient::note(const std::string& url, const HTTPResponse& response) {
    if (!response.error.empty())
        lastProblem_ = url + ": " + response.error;
    else if (response.status >= 400)
        lastProblem_ = url + ": HTTP " + std::to_string(response.status);
}

void HTTPClient::poll() {
    if (workerMissing_)
        wakeWorker();
    std::vector<std::function<void()>> results;
    {
        const std::lock_guard lock(mutex_);
        results.swap(results_);
        if (!std::exchange(polled_, true))
            wake_.notify_one();
    }
    for (const std::function<void()>& result : results)
        result();
}

void HTTPClient::setWakeUp(std::function<void()> wakeUp) {
    const std::lock_guard lock(wakeUpMutex_);
    wakeUp_ = std::move(wakeUp);
}

void HTTPClient::wakeAfter(std::optional<std::chrono::milliseconds> time) {
    {
        const std::lock_guard lock(mutex_);
        const std::optional<Steady::time_point> old = alarm_;
        alarm_ = time ? std::optional(Steady::now() + *time) : std::nullopt;
        if (!alarm_ || (old && *old <= *alarm_))
            return; // the worker wakes early enough to see it
    }
    wakeWorker();
}

void HTTPClient::wakeWorker() {
    if (!worker_.joinable() && !startWorker())
        return;
    const std::lock_guard lock(mutex_);
    if (transfers_)
        transfers_->wake();
    wake_.notify_one();
}

bool HTTPClient::startWorker() {
    try {
        worker_ = std::thread(&HTTPClient::run, this);
        workerMissing_ = false;
    } catch (const std::system_error& reason) {
        if (!std::exchange(workerMissing_, true))
            logger_.log(std::string("Nothing is downloaded or posted for now: no thread can be "
                                    "started (") +
                            reason.what() + ")",
                        kLogProblem);
    }
    return !workerMissing_;
}

void HTTPClient::run() {
    waitForFirstPoll();
    while (!stopping_) {
        for (Order& order : takeOrders())
            start(std::move(order));
        if (transfers_)
            transfers_->advance([this](Transfer& transfer) {
                deliver(
                    std::bind_front(std::move(transfer.done()), std::move(transfer.response())));
            });
        ring();
        rest();
    }
}

void HTTPClient::waitForFirstPoll() {
    std::unique_lock lock(mutex_);
    wake_.wait_for(lock, kLongestStartUp, [this] { return polled_ || stopping_; });
}

void HTTPClient::load() {
    if (Steady::now() < nextLoad_)
        return;
    std::string problem;
    auto transfers = makeTransfers(problem);
    if (transfers) {
        const std::lock_guard lock(mutex_);
        transfers_ = std::move(transfers);
        return;
    }
    pause_ = problem_.empty() ? kFirstLoadPause : std::min(pause_ * 2, kLongestLoadPause);
    nextLoad_ = Steady::now() + pause_;
    if (problem_.empty())
        deliver([this, problem] {
            logger_.log("Nothing is downloaded or posted: " + problem, kLogProblem);
        });
    problem_ = problem;
}

// Without descriptors libcurl gives transfers whose rest nobody can end.
std::unique_ptr<Transfers> HTTPClient::makeTransfers(std::string& problem) const {
    const CurlLibrary* curl = CurlLibrary::load(problem);
    if (!curl)
        return nullptr;
    auto transfers = std::make_unique<Transfers>(*curl);
    if (transfers->wake())
        return transfers;
    problem = "libcurl cannot be used: it has no descriptors";
    return nullptr;
}

void HTTPClient::start(Order order) {
    if (!transfers_)
        load();
    if (transfers_)
        return transfers_->start(std::move(order.request), userAgent_, std::move(order.done));
    HTTPResponse refusal;
    refusal.error = problem_;
    deliver(std::bind_front(std::move(order.done), std::move(refusal)));
}

std::vector<HTTPClient::Order> HTTPClient::takeOrders() {
    const std::lock_guard lock(mutex_);
    return std::exchange(orders_, {});
}

void HTTPClient::deliver(std::function<void()> result) {
    {
        const std::lock_guard lock(mutex_);
        results_.push_back(std::move(result));
    }
    wakeApplication();
}

// Wakes the application when the wish of `wakeAfter` is due.
void HTTPClient::ring() {
    {
        const std::lock_guard lock(mutex_);
        if (!alarm_ || Steady::now() < *alarm_)
            return;
        alarm_.reset();
    }
    wakeApplication();
}

// Until there is something to do: an order, an answer, an alarm, the end.
void HTTPClient::rest() {
    std::unique_lock lock(mutex_);
    const Steady::time_point latest = Steady::now() + kLongestRest;
    const Steady::time_point end = std::min(alarm_.value_or(latest), latest);
    if (!transfers_) {
        if (orders_.empty() && !stopping_)
            wake_.wait_until(lock, end);
        return;
    }
    lock.unlock();
    const auto time = std::chrono::ceil<std::chrono::milliseconds>(end - Steady::now());
    transfers_->rest(std::max(time, 0ms));
}

void HTTPClient::wakeApplication() {
    const std::lock_guard lock(wakeUpMutex_);
    if (wakeUp_)
        wakeUp_();
}

} // namespace vx::services
