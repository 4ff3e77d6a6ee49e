#pragma once

#include <string>

namespace vx::services {

/// Whether anything may be sent to `url`: https, or plain http to this machine itself (localhost,
/// 127.0.0.0/8, ::1).
bool mayRequest(const std::string& url);

/// Whether an answer from `from` may send the request on to `to`: never to plain http, unless both
/// are on this machine.
bool mayRedirect(const std::string& from, const std::string& to);

/// Whether `url` names this machine itself.
bool isLoopback(const std::string& url);

} // namespace vx::services
