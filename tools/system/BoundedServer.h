#pragma once

#include <httplib.h>

#include "tools/system/ConnectionThreads.h"

namespace vx::tools::system {

/// The library's server with limits to what strangers may take of it: threads, time, and memory
/// before a route has seen their requests. Heads have 64 KiB and 10 seconds; what is longer is
/// answered with 431, what is slower with 408, {"error": TEXT}. A connection serves one request,
/// and of a document all, whichever part is asked for.
class BoundedServer final : public httplib::Server {
public:
    BoundedServer();

private:
    bool process_and_close_socket(socket_t socket) override;

    ConnectionThreads* threads_ = nullptr; // while it listens; the library's
};

} // namespace vx::tools::system
