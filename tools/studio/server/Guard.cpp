#include "tools/studio/server/Guard.h"

#include <random>
#include <utility>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

namespace {

// Scripts, styles and connections of this server alone, no inline code, no text made into markup.
constexpr const char* kContentSecurityPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; "
    "img-src 'self' data:; frame-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors "
    "'none'; "
    "require-trusted-types-for 'script'; trusted-types 'none'";

std::string randomToken() {
    std::random_device random;
    std::string token;
    for (int digit = 0; digit < 32; ++digit)
        token += "0123456789abcdef"[random() & 15u];
    return token;
}

bool isOurs(const std::string& authority, int port) {
    const std::string suffix = ":" + std::to_string(port);
    return authority == "127.0.0.1" + suffix || authority == "localhost" + suffix;
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

bool changesSomething(const httplib::Request& request) {
    return request.method != "GET" && request.method != "HEAD";
}

httplib::Server::HandlerResponse refuse(httplib::Response& response, int status,
                                        const char* reason) {
    response.status = status;
    response.set_content(Json{{"error", reason}}.dump() + "\n", "application/json");
    return httplib::Server::HandlerResponse::Handled;
}

} // namespace

Guard::Guard() : token_(randomToken()) {}

void Guard::protect(httplib::Server& server, std::function<int()> port) const {
    server.set_default_headers({{"Content-Security-Policy", kContentSecurityPolicy},
                                {"X-Content-Type-Options", "nosniff"},
                                {"Referrer-Policy", "no-referrer"},
                                {"Cross-Origin-Resource-Policy", "same-origin"},
                                {"Cross-Origin-Opener-Policy", "same-origin"},
                                {"Cache-Control", "no-store"}});
    server.set_pre_routing_handler([this, port = std::move(port)](const httplib::Request& request,
                                                                  httplib::Response& response) {
        if (hasForeignHost(request, port()))
            return refuse(response, 421, "this host name is not the studio's");
        if (hasForeignOrigin(request, port()))
            return refuse(response, 403, "this origin is not the studio's");
        if (changesSomething(request) && request.get_header_value("X-Studio-Token") != token_)
            return refuse(response, 403, "the header X-Studio-Token is missing or wrong");
        return httplib::Server::HandlerResponse::Unhandled;
    });
}

} // namespace vx::tools::studio
