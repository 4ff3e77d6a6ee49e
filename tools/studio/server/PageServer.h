#pragma once

#include <string>

#include "tools/studio/server/EventChannel.h"
#include "tools/studio/server/Guard.h"
#include "tools/system/LoopbackServer.h"

namespace vx::tools::studio {

class EventStream;
class StudioSession;

/// Serves the page and its requests on loopback. All that the page does can be done with curl:
/// docs/studio.md lists the requests.
class PageServer {
public:
    PageServer(StudioSession& session, EventStream& events);

    /// Listens on `port` or, when it is taken, on the next free one of the twenty after it.
    bool start(int port);
    void stop() { server_.stop(); }

    int port() const { return server_.port(); }
    std::string address() const { return server_.address(); }
    const std::string& token() const { return guard_.token(); }

private:
    void addRoutes(httplib::Server& server);
    void addPage(httplib::Server& server) const;
    void addQueries(httplib::Server& server);

    StudioSession& session_;
    EventStream& events_;
    const Guard guard_;
    EventChannel channel_;
    system::LoopbackServer server_;
};

} // namespace vx::tools::studio
