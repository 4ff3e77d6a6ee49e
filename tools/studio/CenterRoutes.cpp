#include "tools/studio/CenterRoutes.h"

#include <string>

#include "hosts/web/StaticFiles.h"
#include "hosts/web/WebSurface.h"
#include "tools/studio/Answers.h"
#include "tools/studio/Assets.h"
#include "tools/studio/Session.h"

namespace vx::tools::studio {

namespace {

constexpr std::size_t kLongestEvent = 4096;

// The policy that the center's page needs, and leave to be framed by the studio's own.
void setFramedPolicy(httplib::Response& response) {
    response.headers.erase("Content-Security-Policy");
    response.set_header("Content-Security-Policy",
                        std::string(web::contentSecurityPolicy()) + "; frame-ancestors 'self'");
}

void answerWith(httplib::Response& response, const Reply& reply, const char* type) {
    if (reply.problem)
        answerError(response, 404, *reply.problem);
    else
        answerText(response, reply.text, type);
}

struct CenterFile {
    const char* path;
    const char* type;
    std::string (*text)();
};
constexpr CenterFile kCenterFiles[] = {
    {"/center/center.js", "text/javascript", [] { return asset("center.js"); }},
    {"/center/surface.css", "text/css", [] { return std::string(web::surfaceCSS()); }},
    {"/center/surface.js", "text/javascript", [] { return std::string(web::surfaceJS()); }},
};

void takeEvent(Session& session, const httplib::Request& request, httplib::Response& response) {
    if (request.body.size() > kLongestEvent)
        return answerError(response, 413, "no event is that long");
    const Reply reply = session.centerEvent(request.body);
    if (reply.problem)
        answerError(response, 409, *reply.problem);
    else
        answerText(response, reply.text, "application/json");
}

} // namespace

void addCenter(httplib::Server& server, Session& session) {
    server.Get("/center/", [&](const httplib::Request&, httplib::Response& response) {
        setFramedPolicy(response);
        answerWith(response, session.centerPage(), "text/html; charset=utf-8");
    });
    server.Get("/center/layout.css", [&](const httplib::Request&, httplib::Response& response) {
        answerWith(response, session.centerLayout(), "text/css; charset=utf-8");
    });
    for (const CenterFile& file : kCenterFiles)
        server.Get(file.path, [file](const httplib::Request&, httplib::Response& response) {
            answerText(response, file.text(), std::string(file.type) + "; charset=utf-8");
        });
    server.Post("/api/center/event",
                [&](const httplib::Request& request, httplib::Response& response) {
                    takeEvent(session, request, response);
                });
}

} // namespace vx::tools::studio
