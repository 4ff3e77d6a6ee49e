#pragma once

#include <optional>

#include <httplib.h>

namespace vx::tools::studio {

/// Why a request is refused.
struct Refusal {
    int status = 0;
    const char* reason = "";
};

/// What links on other sites may lead to.
enum class Links { Nowhere, FrontPage };

/// Tells strangers from a server's own page and from programs such as curl: other sites in the
/// user's browser, which the browser names, and names that were made to resolve to this machine.
/// Nothing for what may pass. `port` is the server's.
std::optional<Refusal> checkOrigin(const httplib::Request& request, int port,
                                   Links links = Links::Nowhere);
/// For a handler that runs before the routes: answers with the refusal, where there is one.
httplib::Server::HandlerResponse turnAway(const std::optional<Refusal>& refusal,
                                          httplib::Response& response);

} // namespace vx::tools::studio
