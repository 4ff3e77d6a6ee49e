#include "tools/studio/PageServer.h"

#include <cstdlib>
#include <string>

#include "tools/studio/Actions.h"
#include "tools/studio/Answers.h"
#include "tools/studio/Assets.h"
#include "tools/studio/CenterRoutes.h"
#include "tools/studio/EventStream.h"
#include "tools/studio/Session.h"

namespace vx::tools::studio {

namespace {

constexpr int kPortsToTry = 21;

struct File {
    const char* name;
    const char* type;
};
constexpr File kPageFiles[] = {
    {"application.js", "text/javascript"},
    {"connection.js", "text/javascript"},
    {"controls.js", "text/javascript"},
    {"dom.js", "text/javascript"},
    {"editor.js", "text/javascript"},
    {"findings.js", "text/javascript"},
    {"icon.svg", "image/svg+xml"},
    {"inspector.js", "text/javascript"},
    {"main.js", "text/javascript"},
    {"phone.js", "text/javascript"},
    {"studio.css", "text/css"},
    {"tabs.js", "text/javascript"},
    {"tcstring.js", "text/javascript"},
    {"timeline.js", "text/javascript"},
    {"vendorlist.js", "text/javascript"},
};

} // namespace

PageServer::PageServer(Session& session, EventStream& events)
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
    addAssets(server);
    addQueries(server);
    addActions(server, session_, events_);
    addCenter(server, session_);
}

void PageServer::addAssets(httplib::Server& server) const {
    server.Get("/", [this](const httplib::Request&, httplib::Response& response) {
        std::string page = asset("index.html");
        const std::string mark = "{{token}}";
        page.replace(page.find(mark), mark.size(), token());
        answerText(response, page, "text/html; charset=utf-8");
    });
    for (const File& file : kPageFiles)
        server.Get(std::string("/") + file.name, [file](const httplib::Request&,
                                                        httplib::Response& response) {
            answerText(response, asset(file.name), std::string(file.type) + "; charset=utf-8");
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
    server.Get("/api/sample", [this](const httplib::Request&, httplib::Response& response) {
        answerText(response, session_.sample(), "application/json");
    });
}

} // namespace vx::tools::studio
