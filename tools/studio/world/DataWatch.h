#pragma once

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

class EventStream;
class SessionRecord;

/// Watches the store's entries and the tag SDK's permanent data, and enters what changes there into
/// the timeline, as kinds "store" and "sdk": the entries as they were, in "before", and as they
/// are, in "now"; one that is new or gone is missing on one side. From the changes between two
/// points follows how the one differs from the other. What is too much for an entry is left out,
/// and "left out" counts it.
class DataWatch {
public:
    DataWatch(EventStream& events, SessionRecord& record) : events_(events), record_(record) {}

    /// `state` is what the application reports as changed, or all of it.
    void look(const Json& state);

private:
    EventStream& events_;
    SessionRecord& record_;
    Json store_ = Json::array(); // pairs of key and value
    Json permanentData_ = Json::array();
};

} // namespace vx::tools::studio
