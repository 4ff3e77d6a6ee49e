#include "tools/studio/shared/EventStream.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace vx::tools::studio {

namespace {

constexpr std::size_t kMostNews = 512u << 10; // bytes at a time
constexpr std::size_t kKeptOfLongEntry = 4096;
constexpr std::size_t kLongestTitle = 512;

std::int64_t now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

// The writing of JSON mends a character that is cut in two.
std::string beginning(std::string text, std::size_t most) {
    return text.size() <= most ? text : text.substr(0, most) + "\u2026";
}

Json shortened(const Json& entry, std::size_t bytes) {
    const Json body = entry.value("body", Json());
    Json short_ = {{"kind", entry.value("kind", "")},
                   {"title", entry.value("title", "")},
                   {"body", beginning(body.is_string() ? body.get<std::string>() : dumped(body),
                                      kKeptOfLongEntry)},
                   {"cut", bytes}};
    for (const char* kept : {"level", "id", "at"})
        if (entry.contains(kept))
            short_[kept] = entry[kept];
    return short_;
}

} // namespace

void EventStream::append(Json entry) {
    std::string title = beginning(entry.value("title", ""), kLongestTitle);
    entry["title"] = title;
    const std::lock_guard lock(mutex_);
    entry["id"] = ++lastEntry_;
    entry["at"] = now();
    std::string text = dumped(entry);
    if (text.size() > kLongestEntry)
        text = dumped(shortened(entry, text.size()));
    bytes_ += text.size();
    entries_.push_back(std::make_shared<Entry>(Entry{.id = lastEntry_,
                                                     .kind = entry.value("kind", ""),
                                                     .title = std::move(title),
                                                     .text = std::move(text)}));
    while (entries_.size() > kMostEntries || bytes_ > kMostBytes) {
        bytes_ -= entries_.front()->text.size();
        entries_.pop_front();
    }
    changed_.notify_all();
}

void EventStream::append(const std::string& kind, const std::string& title, Json body) {
    append({{"kind", kind}, {"title", title}, {"body", std::move(body)}});
}

std::uint64_t EventStream::lastEntry() const {
    const std::lock_guard lock(mutex_);
    return lastEntry_;
}

void EventStream::setState(const std::string& section, Json value) {
    const std::lock_guard lock(mutex_);
    state_[section] = std::move(value);
    ++stateRevision_;
    changed_.notify_all();
}

void EventStream::updateState(const std::string& section, const Json& changes) {
    const std::lock_guard lock(mutex_);
    state_[section].update(changes);
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
    Entries entries = after(seen.entry, kMostNews);
    const std::uint64_t last = entries.empty() ? lastEntry_ : entries.back()->id;
    return {.entries = std::move(entries),
            .state = stateRevision_ > seen.state ? state_ : Json(),
            .position = {last, stateRevision_},
            .closed = closed_};
}

EventStream::Entries EventStream::entriesAfter(std::uint64_t entry) const {
    const std::lock_guard lock(mutex_);
    return after(entry, std::numeric_limits<std::size_t>::max());
}

void EventStream::close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
}

EventStream::Entries EventStream::after(std::uint64_t entry, std::size_t mostBytes) const {
    const std::uint64_t first = lastEntry_ - entries_.size(); // the ids are without gaps
    const std::uint64_t skipped = entry > first ? std::min(entry, lastEntry_) - first : 0;
    Entries found;
    std::size_t bytes = 0;
    for (auto each = entries_.begin() + static_cast<std::ptrdiff_t>(skipped);
         each != entries_.end() && bytes < mostBytes; ++each) {
        bytes += (*each)->text.size();
        found.push_back(*each);
    }
    return found;
}

} // namespace vx::tools::studio
