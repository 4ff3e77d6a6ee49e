#include "tools/studio/shared/EventStream.h"

#include <utility>

namespace vx::tools::studio {

namespace {

constexpr std::size_t kMostEntries = 5000;

std::int64_t now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

} // namespace

void EventStream::append(Json entry) {
    const std::lock_guard lock(mutex_);
    entry["id"] = ++lastEntry_;
    entry["at"] = now();
    entries_.push_back(std::move(entry));
    if (entries_.size() > kMostEntries)
        entries_.pop_front();
    changed_.notify_all();
}

void EventStream::append(const std::string& kind, const std::string& title, Json body) {
    append({{"kind", kind}, {"title", title}, {"body", std::move(body)}});
}

void EventStream::setState(const std::string& section, Json value) {
    const std::lock_guard lock(mutex_);
    state_[section] = std::move(value);
    ++stateRevision_;
    changed_.notify_all();
}

Json EventStream::state() const {
    const std::lock_guard lock(mutex_);
    return state_;
}

EventStream::News EventStream::waitAfter(Position seen, std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, patience, [&] {
        return closed_ || lastEntry_ > seen.entry || stateRevision_ > seen.state;
    });
    return {.entries = after(seen.entry),
            .state = stateRevision_ > seen.state ? state_ : Json(),
            .position = {lastEntry_, stateRevision_},
            .closed = closed_};
}

std::vector<Json> EventStream::entriesAfter(std::uint64_t entry) const {
    const std::lock_guard lock(mutex_);
    return after(entry);
}

void EventStream::close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
}

std::vector<Json> EventStream::after(std::uint64_t entry) const {
    const std::uint64_t first = lastEntry_ - entries_.size(); // the ids are without gaps
    const std::uint64_t skipped = entry > first ? std::min(entry, lastEntry_) - first : 0;
    return {entries_.begin() + static_cast<std::ptrdiff_t>(skipped), entries_.end()};
}

} // namespace vx::tools::studio
