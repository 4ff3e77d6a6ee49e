#include "tools/studio/server/CenterRoutes.h"

#include <string>

#include "tools/studio/server/ServedFile.h"
#include "tools/studio/shared/Answers.h"
#include "tools/studio/shared/Routes.h"
#include "tools/studio/world/StudioSession.h"
#include "vxprivacy/hosts/web/StaticFiles.h"
#include "vxprivacy/hosts/web/WebSurface.h"

namespace vx::tools::studio {

namespace {

constexpr std::size_t kLongestEvent = 4096;

// In place of the studio's, which lets nobody frame its page.
void setFramedPolicy(httplib::Response& response) {
    response.headers.erase("Content-Security-Policy");
    response.set_header("Content-Security-Policy", std::string(web::contentSecurityPolicy()));
}

void answerWith(httplib::Response& response, const Reply& reply, const char* type,
                int problemStatus) {
    if (reply)
        answerText(response, *reply, type);
    else
        answerError(response, problemStatus, reply.problem());
}

} // namespace

void addCenter(httplib::Server& server, StudioSession& session) {
    addGet(server, "/center/", [&](const httplib::Request&, httplib::Response& response) {
        setFramedPolicy(response);
        answerWith(response, session.centerPage(), "text/html; charset=utf-8", 404);
    });
    addGet(server, "/center/layout.css", [&](const httplib::Request&, httplib::Response& response) {
        answerWith(response, session.centerLayout(), "text/css; charset=utf-8", 404);
    });
    for (const web::StaticFile& file : web::staticFiles())
        serveFile(server, "/center/" + std::string(file.name), file);
    addPost(server, "/api/center/event", kLongestEvent,
            [&](const httplib::Request&, const std::string& event, httplib::Response& response) {
                answerWith(response, session.centerEvent(event), "application/json", 409);
            });
}

} // namespace vx::tools::studio
