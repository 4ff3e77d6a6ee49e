#include "tools/studio/server/Guard.h"

#include <optional>
#include <random>
#include <utility>

#include "tools/studio/shared/OriginCheck.h"

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

bool changesSomething(const httplib::Request& request) {
    return request.method != "GET" && request.method != "HEAD";
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
        std::optional<Refusal> refusal = checkOrigin(request, port(), Links::FrontPage);
        if (!refusal && changesSomething(request) &&
            request.get_header_value("X-Studio-Token") != token_)
            refusal = {403, "the header X-Studio-Token is missing or wrong"};
        return turnAway(refusal, response);
    });
}

} // namespace vx::tools::studio
