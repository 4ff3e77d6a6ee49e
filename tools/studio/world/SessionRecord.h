#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>

#include "tools/studio/shared/Json.h"
#include "tools/studio/shared/Protocol.h"
#include "tools/studio/world/SessionScript.h"

namespace vx::tools::studio {

class EventStream;

/// What was done to the application, launch by launch, for `vxprivacy play` to do again. Any
/// thread may call.
class SessionRecord {
public:
    explicit SessionRecord(const EventStream& events) : events_(events) {}

    /// A process began with this: `SessionSteps::launch`.
    void launched(Json start);
    /// A step, or a text that is to be a comment. Without a launch before it is forgotten.
    void add(const Json& step);
    /// The store's entries are these, pairs of key and value.
    void stored(const Json& entries);
    /// Whether the store is written: else the process takes with it what nothing keeps.
    void kept(bool isKept);

    /// The session begins with the next launch: one is played. What came before it is kept.
    void begin();
    /// It is the whole again.
    void end();

    /// The session since the oldest launch that there is room for; a problem when there is none for
    /// the last one.
    Reply script() const;

    /// Of a whole session; the oldest launches go when there is more.
    static constexpr std::size_t kMostBytes = 8u << 20;

private:
    void add(std::size_t bytes);

    const EventStream& events_;
    mutable std::mutex mutex_; // guards what follows
    std::deque<SessionChapter> chapters_;
    std::size_t bytes_ = 0;
    std::uint64_t launches_ = 0;
    std::uint64_t first_ = 1; // launch of the session
    // As the last process left it.
    bool isKept_ = true;
    bool iab_ = false;
    std::string inForce_; // the publisher's country
    // Digests: the texts are as large as the session.
    std::size_t store_ = 0;
    std::map<std::string, std::size_t> files_; // by name
};

} // namespace vx::tools::studio
