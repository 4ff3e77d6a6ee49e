#include "tools/studio/shared/OriginCheck.h"

#include <string>

#include "tools/studio/shared/Answers.h"

namespace vx::tools::studio {

namespace {

constexpr int kHTTPPort = 80; // browsers leave it out

bool isOurs(const std::string& authority, int port) {
    for (const char* host : {"127.0.0.1", "localhost"})
        if (authority == host + (":" + std::to_string(port)) ||
            (port == kHTTPPort && authority == host))
            return true;
    return false;
}

bool hasForeignHost(const httplib::Request& request, int port) {
    return request.get_header_value_count("Host") != 1 ||
           !isOurs(request.get_header_value("Host"), port);
}

bool hasForeignOrigin(const httplib::Request& request, int port) {
    const std::string scheme = "http://";
    const std::string origin = request.get_header_value("Origin");
    return request.has_header("Origin") &&
           !(origin.starts_with(scheme) && isOurs(origin.substr(scheme.size()), port));
}

// Said by browsers of every request, be it for an image or a script, which have no Origin. Another
// port is another origin, though of the same site.
bool isOfAnotherSite(const httplib::Request& request) {
    const std::string site = request.get_header_value("Sec-Fetch-Site");
    return request.has_header("Sec-Fetch-Site") && site != "same-origin" && site != "none";
}

bool followsALink(const httplib::Request& request) {
    return request.method == "GET" && request.path == "/" &&
           request.get_header_value("Sec-Fetch-Mode") == "navigate" &&
           request.get_header_value("Sec-Fetch-Dest") == "document";
}

} // namespace

std::optional<Refusal> checkOrigin(const httplib::Request& request, int port, Links links) {
    if (hasForeignHost(request, port))
        return Refusal{421, "this host name is not the studio's"};
    if (hasForeignOrigin(request, port))
        return Refusal{403, "this origin is not the studio's"};
    if (isOfAnotherSite(request) && !(links == Links::FrontPage && followsALink(request)))
        return Refusal{403, "this request is another site's"};
    return {};
}

httplib::Server::HandlerResponse turnAway(const std::optional<Refusal>& refusal,
                                          httplib::Response& response) {
    if (!refusal)
        return httplib::Server::HandlerResponse::Unhandled;
    answerError(response, refusal->status, {refusal->reason});
    return httplib::Server::HandlerResponse::Handled;
}

} // namespace vx::tools::studio
