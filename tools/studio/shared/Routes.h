#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include <httplib.h>

namespace vx::tools::studio {

/// The longest body of a request, in bytes, as it was sent and unpacked.
inline constexpr std::size_t kLargestBody = 8u << 20;

/// Makes `server` answer GET requests for `path`, a regular expression, and refuse to POST there.
void addGet(httplib::Server& server, const std::string& path, httplib::Server::Handler answer);

/// Takes a body that was read whole, unpacked where it came packed.
using TakeBody = std::function<void(const httplib::Request& request, const std::string& body,
                                    httplib::Response& response)>;

/// Makes `server` answer POST requests for `path`. A form, a body of more than `most` bytes, packed
/// or not, and one that cannot be read are refused before anything takes them.
void addPost(httplib::Server& server, const std::string& path, std::size_t most, TakeBody take);

/// Makes `server` say what is wrong, {"error": TEXT}, where no route answers. To be called after
/// all routes were added.
void refuseOthers(httplib::Server& server);

} // namespace vx::tools::studio
