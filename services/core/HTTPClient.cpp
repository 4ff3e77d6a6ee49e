#include "services/core/HTTPClient.h"

#include <algorithm>
#include <utility>

namespace vx::services {

namespace {

constexpr int kLongestRest = 60'000; // milliseconds

// Costs some milliseconds, so it is left to the worker. Never undone: others may use curl, too.
void initialiseCurl() {
    static const CURLcode done = curl_global_init(CURL_GLOBAL_DEFAULT);
    (void)done;
}

} // namespace

HTTPClient::HTTPClient(std::string userAgent) : userAgent_(std::move(userAgent)) {}

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
    {
        const std::lock_guard lock(mutex_);
        results.swap(results_);
    }
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
    if (multi_)
        curl_multi_wakeup(multi_);
    else if (!worker_.joinable() && !stopping_)
        worker_ = std::thread(&HTTPClient::run, this);
}

void HTTPClient::run() {
    initialiseCurl();
    const MultiHandle multi(curl_multi_init());
    {
        const std::lock_guard lock(mutex_);
        multi_ = multi.get();
    }
    Transfers transfers;
    while (!stopping_) {
        startOrders(multi.get(), transfers);
        int running = 0;
        curl_multi_perform(multi.get(), &running);
        finishTransfers(multi.get(), transfers);
        curl_multi_poll(multi.get(), nullptr, 0, timeToNextWakeUp(), nullptr);
    }
    {
        const std::lock_guard lock(mutex_);
        multi_ = nullptr;
    }
    for (const auto& [easy, transfer] : transfers)
        curl_multi_remove_handle(multi.get(), easy);
}

void HTTPClient::startOrders(CURLM* multi, Transfers& transfers) {
    std::vector<Order> orders;
    {
        const std::lock_guard lock(mutex_);
        orders.swap(orders_);
    }
    for (Order& order : orders) {
        auto transfer =
            std::make_unique<Transfer>(std::move(order.request), userAgent_, std::move(order.done));
        CURL* easy = transfer->handle();
        curl_multi_add_handle(multi, easy);
        transfers.emplace(easy, std::move(transfer));
    }
}

void HTTPClient::finishTransfers(CURLM* multi, Transfers& transfers) {
    int left = 0;
    while (CURLMsg* message = curl_multi_info_read(multi, &left)) {
        CURL* easy = message->easy_handle;
        const CURLcode outcome = message->data.result;
        const auto found = transfers.find(easy);
        curl_multi_remove_handle(multi, easy);
        if (found->second->finish(outcome)) {
            curl_multi_add_handle(multi, easy);
            continue;
        }
        deliver(*found->second);
        transfers.erase(found);
    }
}

void HTTPClient::deliver(Transfer& transfer) {
    {
        const std::lock_guard lock(mutex_);
        results_.push_back({std::move(transfer.response()), std::move(transfer.done())});
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
