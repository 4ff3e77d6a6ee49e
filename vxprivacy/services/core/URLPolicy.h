#pragma once

#include <string>

namespace vx::services {

class CurlLibrary;

// Where requests may go. An address is absolute, of printable ASCII and without a user name.
//
// An address is judged before libcurl is loaded, so that none that is refused is kept in the store
// and a wrong host is logged at start-up. Before anything is sent, libcurl has to read the same
// host in it.

/// Whether anything may be sent to `url`: https, or plain http to this machine itself (localhost,
/// 127.0.0.0/8, ::1).
bool mayRequest(const std::string& url);

/// Whether `url` is a path alone, since the host before it was left empty.
bool namesNoHost(const std::string& url);

/// Whether an answer from `from`, to which the request could be sent, may send it on to `to`: never
/// from https to plain http.
bool mayRedirect(const std::string& from, const std::string& to);

/// Whether `url` names this machine itself.
bool isLoopback(const std::string& url);

/// Whether libcurl sends a request for `url` to the host that the functions above see in it. Not
/// so for what can be read in two ways, as a number in another base.
bool isReadAlike(const CurlLibrary& curl, const std::string& url);

} // namespace vx::services
