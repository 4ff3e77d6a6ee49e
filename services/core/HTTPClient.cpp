#include "services/core/HTTPClient.h"

#include <algorithm>
#include <utility>

namespace vx::services {

namespace {

constexpr int kLongestRest = 60'000; // milliseconds
constexpr std::chrono::milliseconds kHeadStart(50);

} // namespace

HTTPClient::HTTPClient(std::string userAgent, Logger& logger)
    : userAgent_(std::move(userAgent)), logger_(logger) {}

HTTPClient::~HTTPClient() {
    stopping_ = true;
    wakeWorker();
    if (worker_.joinable())
        worker_.join();
}

void HTTPClient::submit(HTTPRequest request, Transfer::Done done) {
    {
        const std::lock_guard lock(mutex_);
        orders_.push_back({std::move(request), std::move(done)});
    }
    wakeWorker();
}

void HTTPClient::poll() {
    std::vector<Result> results;
    std::string problem;
    {
        const std::lock_guard lock(mutex_);
        results.swap(results_);
        problem.swap(problem_);
        if (!std::exchange(polled_, true))
            wake_.notify_one();
    }
    if (!problem.empty())
        logger_.log("Nothing is downloaded or posted: " + problem, 4);
    for (const Result& result : results)
        result.done(result.response);
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
    const std::lock_guard lock(mutex_);
    woken_ = true;
    if (transfers_)
        transfers_->wake();
    else if (worker_.joinable())
        wake_.notify_one();
    else if (!stopping_)
        worker_ = std::thread(&HTTPClient::run, this);
}

void HTTPClient::run() {
    waitForStartUp();
    if (stopping_)
        return;
    const CurlLibrary& curl = CurlLibrary::instance();
    if (curl.problem().empty())
        transferOrders(curl);
    else
        refuseOrders(curl.problem());
}

// Loading libcurl slows down whatever else the machine does: the application goes first.
void HTTPClient::waitForStartUp() {
    std::unique_lock lock(mutex_);
    wake_.wait_for(lock, kHeadStart, [this] { return polled_ || stopping_; });
}

void HTTPClient::transferOrders(const CurlLibrary& curl) {
    Transfers transfers(curl);
    setTransfers(&transfers);
    while (!stopping_) {
        for (Order& order : takeOrders())
            transfers.start(std::move(order.request), userAgent_, std::move(order.done));
        transfers.advance([this](Transfer& transfer) {
            deliver(std::move(transfer.response()), std::move(transfer.done()));
        });
        transfers.rest(timeToNextWakeUp());
    }
    setTransfers(nullptr);
}

void HTTPClient::refuseOrders(const std::string& problem) {
    HTTPResponse refusal;
    refusal.error = problem;
    {
        const std::lock_guard lock(mutex_);
        problem_ = problem;
    }
    while (!stopping_) {
        for (Order& order : takeOrders())
            deliver(refusal, std::move(order.done));
        const std::chrono::milliseconds rest(timeToNextWakeUp());
        std::unique_lock lock(mutex_);
        wake_.wait_for(lock, rest, [this] { return std::exchange(woken_, false); });
    }
}

void HTTPClient::setTransfers(Transfers* transfers) {
    const std::lock_guard lock(mutex_);
    transfers_ = transfers;
}

std::vector<HTTPClient::Order> HTTPClient::takeOrders() {
    const std::lock_guard lock(mutex_);
    return std::exchange(orders_, {});
}

void HTTPClient::deliver(HTTPResponse response, Transfer::Done done) {
    {
        const std::lock_guard lock(mutex_);
        results_.push_back({std::move(response), std::move(done)});
    }
    wakeApplication();
}

// Calls the application where the wish of `wakeAfter` is due; says how long the worker may rest.
int HTTPClient::timeToNextWakeUp() {
    bool due = false;
    int rest = kLongestRest;
    {
        const std::lock_guard lock(mutex_);
        if (alarm_) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(*alarm_ - Steady::now());
            due = left.count() <= 0;
            rest = static_cast<int>(std::clamp<long long>(left.count(), 0, kLongestRest));
        }
        if (due)
            alarm_.reset();
    }
    if (due)
        wakeApplication();
    return due ? kLongestRest : rest;
}

void HTTPClient::wakeApplication() {
    const std::lock_guard lock(wakeUpMutex_);
    if (wakeUp_)
        wakeUp_();
}

} // namespace vx::services
