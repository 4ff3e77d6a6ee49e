#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// What happened in the studio, in order, and how things stand now; for one writer or many and any
/// number of readers, on any thread.
class EventStream {
public:
    /// How far a reader has come. A new reader has seen nothing.
    struct Position {
        std::uint64_t entry = 0;
        std::uint64_t state = 0;
    };
    /// What a reader had not seen yet.
    struct News {
        std::vector<Json> entries;
        Json state; ///< null when it is as it was
        Position position;
        bool closed = false;
    };

    /// Adds an entry to the timeline. `entry` has "kind", "title" and perhaps "body" and "level";
    /// it is given "id" (1, 2, ...) and "at" (milliseconds since 1970). The oldest entries go when
    /// there are more than 5000.
    void append(Json entry);
    void append(const std::string& kind, const std::string& title, Json body = nullptr);
    /// Sets one section of the state.
    void setState(const std::string& section, Json value);
    Json state() const;

    /// Waits for something after `seen`, no longer than `patience`.
    News waitAfter(Position seen, std::chrono::milliseconds patience);
    /// The entries after `entry` at once.
    std::vector<Json> entriesAfter(std::uint64_t entry) const;

    /// Ends all waiting, now and later.
    void close();

private:
    mutable std::mutex mutex_; // guards everything below
    std::condition_variable changed_;
    std::deque<Json> entries_;
    std::uint64_t lastEntry_ = 0;
    Json state_ = Json::object();
    std::uint64_t stateRevision_ = 0;
    bool closed_ = false;

    std::vector<Json> after(std::uint64_t entry) const;
};

} // namespace vx::tools::studio
