#include "tools/studio/server/PageServer.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "tools/studio/page/PageFiles.h"
#include "tools/studio/server/Actions.h"
#include "tools/studio/server/CenterRoutes.h"
#include "tools/studio/server/ServedFile.h"
#include "tools/studio/shared/Answers.h"
#include "tools/studio/shared/EventStream.h"
#include "tools/studio/shared/Routes.h"
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

std::string asArray(const EventStream::Entries& entries) {
    std::string text = "[";
    for (const auto& entry : entries) {
        text += text.size() > 1 ? ",\n" : "\n";
        text += entry->text;
    }
    return text + "\n]\n";
}

void answerScript(httplib::Response& response, Reply script) {
    if (!script)
        return answerError(response, 409, script.problem());
    response.set_header("Content-Disposition", "attachment; filename=\"session.jsonl\"");
    answerText(response, std::move(*script), "text/plain; charset=utf-8");
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
    refuseOthers(server);
}

void PageServer::addPage(httplib::Server& server) const {
    for (const web::StaticFile& file : pageFiles())
        if (file.name != kIndex)
            serveFile(server, "/" + std::string(file.name), file);
    addGet(server, "/", [this](const httplib::Request&, httplib::Response& response) {
        answerText(response, withToken(pageFiles()[kIndex], token()), "text/html; charset=utf-8");
    });
}

void PageServer::addQueries(httplib::Server& server) {
    addGet(server, "/api/state", [this](const httplib::Request&, httplib::Response& response) {
        answer(response, events_.state());
    });
    addGet(server, "/api/timeline",
           [this](const httplib::Request& request, httplib::Response& response) {
               const std::uint64_t after =
                   std::strtoull(request.get_param_value("after").c_str(), nullptr, 10);
               answerText(response, asArray(events_.entriesAfter(after)), "application/json");
           });
    addGet(server, "/api/events",
           [this](const httplib::Request& request, httplib::Response& response) {
               channel_.serve(request, response);
           });
    addGet(server, "/api/session/steps",
           [this](const httplib::Request& request, httplib::Response& response) {
               const Result<Json> steps = session_.scriptSteps(
                   std::strtoull(request.get_param_value("from").c_str(), nullptr, 10));
               if (steps)
                   answer(response, *steps);
               else
                   answerError(response, 404, steps.problem());
           });
    // These are posted as well.
    server.Get("/api/session", [this](const httplib::Request&, httplib::Response& response) {
        answerScript(response, session_.script());
    });
    server.Get("/api/configuration", [this](const httplib::Request&, httplib::Response& response) {
        answerText(response, *session_.published().text, "application/json");
    });
    server.Get("/api/restrictions", [this](const httplib::Request&, httplib::Response& response) {
        answerText(response, session_.restrictions(), "application/json");
    });
    addGet(server, "/api/sample", [this](const httplib::Request&, httplib::Response& response) {
        answerText(response, session_.sample(), "application/json");
    });
}

} // namespace vx::tools::studio
