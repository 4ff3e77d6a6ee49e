#pragma once

#include <string>

namespace vx::services {

// An address is absolute, of printable ASCII, and spelled plainly: scheme, host, an optional port,
// then the rest. User names, numbers in other bases and whatever else two readers might take for
// different hosts make it no address, and nothing is sent there.

/// Whether anything may be sent to `url`: https, or plain http to this machine itself (localhost,
/// 127.0.0.0/8, ::1).
bool mayRequest(const std::string& url);

/// Whether an answer from `from` may send the request on to `to`: never to plain http, unless both
/// are on this machine.
bool mayRedirect(const std::string& from, const std::string& to);

/// Whether `url` names this machine itself.
bool isLoopback(const std::string& url);

} // namespace vx::services
