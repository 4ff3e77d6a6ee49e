#pragma once

#include <atomic>

#include <httplib.h>

namespace vx::tools::studio {

class EventStream;

/// Sends the stream to open pages as server-sent events: "entry" for each entry of the timeline,
/// "state" whenever the state changed. A page that comes back goes on where it stopped.
class EventChannel {
public:
    explicit EventChannel(EventStream& events) : events_(events) {}

    void serve(const httplib::Request& request, httplib::Response& response);

private:
    EventStream& events_;
    std::atomic<int> open_ = 0;
};

} // namespace vx::tools::studio
