#include "tools/studio/server/PageServer.h"

#include <cstdlib>
#include <string>
#include <string_view>

#include "tools/studio/page/PageFiles.h"
#include "tools/studio/server/Actions.h"
#include "tools/studio/server/Answers.h"
#include "tools/studio/server/CenterRoutes.h"
#include "tools/studio/shared/EventStream.h"
#include "tools/studio/world/StudioSession.h"

namespace vx::tools::studio {

namespace {

constexpr int kPortsToTry = 21;
constexpr std::string_view kIndex = "index.html";

// What the page says to prove that it is this run's.
std::string withToken(std::string_view page, const std::string& token) {
    std::string text(page);
    const std::string_view mark = "{{token}}";
    return text.replace(text.find(mark), mark.size(), token);
}

} // namespace

PageServer::PageServer(StudioSession& session, EventStream& events)
    : session_(session), events_(events), channel_(events),
      server_([this](httplib::Server& server) { addRoutes(server); }) {}

bool PageServer::start(int port) {
    for (int attempt = 0; attempt < kPortsToTry && port + attempt < 65536; ++attempt)
        if (server_.start(port == 0 ? 0 : port + attempt))
            return true;
    return false;
}

void PageServer::addRoutes(httplib::Server& server) {
    guard_.protect(server, [this] { return server_.port(); });
    addPage(server);
    addQueries(server);
    addActions(server, session_, events_);
    addCenter(server, session_);
}

void PageServer::addPage(httplib::Server& server) const {
    for (const web::StaticFile& file : pageFiles())
        if (file.name != kIndex)
            serveFile(server, "/" + std::string(file.name), file);
    server.Get("/", [this](const httplib::Request&, httplib::Response& response) {
        answerText(response, withToken(pageFiles()[kIndex], token()), "text/html; charset=utf-8");
    });
}

void PageServer::addQueries(httplib::Server& server) {
    server.Get("/api/state", [this](const httplib::Request&, httplib::Response& response) {
        answer(response, events_.state());
    });
    server.Get("/api/timeline",
               [this](const httplib::Request& request, httplib::Response& response) {
                   answer(response, events_.entriesAfter(std::strtoull(
                                        request.get_param_value("after").c_str(), nullptr, 10)));
               });
    server.Get("/api/events", [this](const httplib::Request& request, httplib::Response& response) {
        channel_.serve(request, response);
    });
    server.Get("/api/configuration", [this](const httplib::Request&, httplib::Response& response) {
        answerText(response, session_.published().text, "application/json");
    });
    server.Get("/api/restrictions", [this](const httplib::Request&, httplib::Response& response) {
        answerText(response, session_.restrictions(), "application/json");
    });
    server.Get("/api/sample", [this](const httplib::Request&, httplib::Response& response) {
        answerText(response, session_.sample(), "application/json");
    });
}

} // namespace vx::tools::studio
