#include "bench/outage/Fleet.h"

#include <algorithm>
#include <functional>

namespace vx::bench {

namespace {

using services::WaitingRequest;

constexpr std::uint64_t kRun = 10 * kMinute;
constexpr std::uint64_t kLongestBreak = 8 * kHour;

} // namespace

Fleet::Fleet(const Scenario& scenario) : scenario_(scenario) {
    outcome_.requests.resize(scenario.end / kSecond + 1);
}

Outcome Fleet::run() {
    const double savesPerMillisecond =
        scenario_.devices * scenario_.savesPerDay / static_cast<double>(24 * kHour);
    std::exponential_distribution<double> pause(savesPerMillisecond);
    std::uniform_int_distribution<std::uint32_t> device(0, scenario_.devices - 1);
    double nextSave = pause(random_);
    while (nextSave < static_cast<double>(scenario_.end)) {
        const auto time = static_cast<std::uint64_t>(nextSave);
        for (; !moments_.empty() && moments_.top().first <= time; moments_.pop()) {
            now_ = moments_.top().first;
            postDue(moments_.top().second);
        }
        now_ = time;
        save(device(random_));
        nextSave += pause(random_);
    }
    return std::move(outcome_);
}

void Fleet::save(std::uint32_t number) {
    Device& device = waiting_[number];
    if (isDown())
        ++outcome_.backlog;
    device.runsUntil = std::max(device.runsUntil, now_ + kRun);
    services::hurry(device.requests, "", now_);
    device.requests.push_back({++saves_, 1, "", "", now_, now_});
    postDue(number);
    if (now_ >= scenario_.up && waiting_.contains(number))
        ++outcome_.heldBack;
}

// One after the other, as each answer gives the turn to the next.
void Fleet::postDue(std::uint32_t number) {
    const auto found = waiting_.find(number);
    if (found == waiting_.end())
        return;
    Device& device = found->second;
    for (;;) {
        const auto turns = services::inTurn(device.requests, now_);
        if (turns.empty()) {
            waiting_.erase(found);
            return;
        }
        if (services::waitLeft(*turns.front(), now_) > 0 || !post(*turns.front()))
            return planNext(number, device);
        device.requests.pop_front();
    }
}

// Whether it was delivered.
bool Fleet::post(WaitingRequest& request) {
    ++outcome_.requests[now_ / kSecond];
    if (!isDown()) {
        if (request.created >= scenario_.down && request.created < scenario_.up)
            outcome_.arrivals.push_back(now_ - scenario_.up);
        return true;
    }
    const std::uint64_t failed = now_ + scenario_.failure;
    ++request.attempts;
    request.nextTry =
        failed + retries_.wait(request.attempts, failed - request.created, std::chrono::seconds());
    request.mayHurry = true;
    return false;
}

void Fleet::planNext(std::uint32_t number, Device& device) {
    const std::uint64_t due =
        now_ + services::waitLeft(*services::inTurn(device.requests, now_).front(), now_);
    std::uint64_t start = now_;
    while (!scenario_.alwaysRunning && device.runsUntil < due) {
        start = device.runsUntil + random_() % kLongestBreak;
        device.runsUntil = start + kRun;
    }
    moments_.emplace(std::max(due, start), number);
}

} // namespace vx::bench
