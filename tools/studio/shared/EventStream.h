#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// What happened in the studio, in order, and how things stand now; for one writer or many and any
/// number of readers, on any thread.
class EventStream {
public:
    /// An entry of the timeline.
    struct Entry {
        std::uint64_t id = 0;
        std::string kind;
        std::string title;
        std::string text; ///< all of it, as JSON on one line
    };
    using Entries = std::vector<std::shared_ptr<const Entry>>;

    /// How far a reader has come. A new reader has seen nothing.
    struct Position {
        std::uint64_t entry = 0;
        std::uint64_t state = 0;
    };
    /// What a reader had not seen yet, or the first of it where that is much.
    struct News {
        Entries entries;
        Json state; ///< null when it is as it was
        Position position;
        bool closed = false;
    };

    /// Adds an entry to the timeline. `entry` has "kind", "title" and perhaps "body" and "level";
    /// it is given "id" (1, 2, ...) and "at" (milliseconds since 1970). Of one that is longer than
    /// `kLongestEntry` the beginning of the body stays, as text, and "cut" says how many bytes all
    /// had. The oldest entries go when there are more than `kMostEntries`, or of more than
    /// `kMostBytes`.
    void append(Json entry);
    void append(const std::string& kind, const std::string& title, Json body = nullptr);
    /// The number of the last entry; 0 before the first.
    std::uint64_t lastEntry() const;
    /// Sets one section of the state.
    void setState(const std::string& section, Json value);
    /// Sets those members of a section that `changes` has.
    void updateState(const std::string& section, const Json& changes);
    Json state() const;

    /// Waits for something after `seen`, no longer than `patience`.
    News waitAfter(Position seen, std::chrono::milliseconds patience);
    /// The entries after `entry` at once.
    Entries entriesAfter(std::uint64_t entry) const;

    /// Ends all waiting, now and later.
    void close();

    static constexpr std::size_t kMostEntries = 5000;
    static constexpr std::size_t kLongestEntry = 128u << 10; ///< in bytes of JSON, as the next
    static constexpr std::size_t kMostBytes = 8u << 20;

private:
    mutable std::mutex mutex_; // guards everything below
    std::condition_variable changed_;
    std::deque<std::shared_ptr<const Entry>> entries_;
    std::size_t bytes_ = 0; // of all entries
    std::uint64_t lastEntry_ = 0;
    Json state_ = Json::object();
    std::uint64_t stateRevision_ = 0;
    bool closed_ = false;

    Entries after(std::uint64_t entry, std::size_t mostBytes) const;
};

} // namespace vx::tools::studio
