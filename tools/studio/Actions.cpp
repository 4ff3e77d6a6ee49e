#include "tools/studio/Actions.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "tools/lint/Lint.h"
#include "tools/lint/Report.h"
#include "tools/studio/Answers.h"
#include "tools/studio/EventStream.h"
#include "tools/studio/LoopbackServer.h"
#include "tools/studio/Session.h"

namespace vx::tools::studio {

namespace {

constexpr double kMillisecondsPerDay = 86'400'000.0;
constexpr double kMostDays = 200 * 366;
constexpr double kPhoneWidth = 390; // points

Json argument(const std::string& body, const char* name) {
    const Json arguments = parsed(body);
    return arguments.is_object() ? arguments.value(name, Json()) : Json();
}

Problem sendHit(Session& session, const std::string& body) {
    const Json name = argument(body, "name");
    return session.hit(name.is_string() ? name.get<std::string>() : "screen_view");
}

Problem setNetwork(Session& session, const std::string& body) {
    const Json on = argument(body, "on");
    if (!on.is_boolean())
        return "say {\"on\": true} or {\"on\": false}";
    return session.setNetwork(on.get<bool>());
}

Problem setMode(Session& session, const std::string& body) {
    const Json iab = argument(body, "iab");
    if (!iab.is_boolean())
        return "say {\"iab\": true} or {\"iab\": false}";
    return session.setMode(iab.get<bool>());
}

Problem moveClock(Session& session, const std::string& body) {
    const Json advance = argument(body, "advance");
    const Json days = advance.is_number() ? advance : argument(body, "offset");
    if (!days.is_number() || std::abs(days.get<double>()) > kMostDays)
        return "say {\"advance\": DAYS} or {\"offset\": DAYS}";
    const std::chrono::milliseconds move(
        static_cast<std::int64_t>(days.get<double>() * kMillisecondsPerDay));
    return session.moveClock(advance.is_number() ? session.clockOffset() + move : move);
}

Problem openCenter(Session& session, const std::string& body) {
    const Json width = argument(body, "width");
    const double points = width.is_number() ? width.get<double>() : kPhoneWidth;
    return session.openCenter(std::clamp(points, 100.0, 2000.0));
}

struct Action {
    const char* path;
    Problem (*perform)(Session&, const std::string& body);
};
constexpr Action kActions[] = {
    {"/api/accept", [](Session& session, const std::string&) { return session.accept(); }},
    {"/api/refuse", [](Session& session, const std::string&) { return session.refuse(); }},
    {"/api/center/open", openCenter},
    {"/api/center/dismiss",
     [](Session& session, const std::string&) { return session.dismissCenter(); }},
    {"/api/relaunch", [](Session& session, const std::string&) { return session.relaunch(); }},
    {"/api/kill", [](Session& session, const std::string&) { return session.killHard(); }},
    {"/api/reset", [](Session& session, const std::string&) { return session.reset(); }},
    {"/api/hit", sendHit},
    {"/api/network", setNetwork},
    {"/api/clock", moveClock},
    {"/api/mode", setMode},
};

// Read here, because the library takes no more than 8 KiB of the content type that curl gives a
// body unasked, and waits for the end of a body of which no length is said, such as that of a plain
// "curl -X POST". Nothing when it cannot be read whole or is too large.
std::optional<std::string> bodyOf(const httplib::Request& request,
                                  const httplib::ContentReader& read) {
    std::string body;
    if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding"))
        return body;
    const bool whole = read([&](const char* data, std::size_t size) {
        if (size > kLargestBody - body.size()) // of which the library only saw a length announced
            return false;
        body.append(data, size);
        return true;
    });
    return whole ? std::optional(std::move(body)) : std::nullopt;
}

// Reads it to its end, so that its sender hears the answer.
void refuseForm(const httplib::ContentReader& read, httplib::Response& response) {
    read([](const httplib::MultipartFormData&) { return true; },
         [](const char*, std::size_t) { return true; });
    answerError(response, 415, "post the text itself, not a form");
}

void publish(Session& session, const std::string& text, httplib::Response& response) {
    const Publication::Draft draft = session.publish(text);
    if (!draft.problem.empty())
        answerError(response, 422, draft.problem);
    else
        answer(response, {{"version", draft.version}, {"text", draft.text}});
}

} // namespace

void addActions(httplib::Server& server, Session& session, const EventStream& events) {
    const auto post = [&](const char* path, auto perform) {
        server.Post(path, [perform](const httplib::Request& request, httplib::Response& response,
                                    const httplib::ContentReader& read) {
            if (request.is_multipart_form_data())
                refuseForm(read, response);
            else if (const auto body = bodyOf(request, read))
                perform(*body, response);
            else
                answerError(response, 413, "a body has 8 MiB at most");
        });
    };
    for (const Action& action : kActions)
        post(action.path, [&](const std::string& body, httplib::Response& response) {
            if (const Problem problem = action.perform(session, body))
                answerError(response, 409, *problem);
            else
                answer(response, events.state());
        });
    post("/api/configuration", [&](const std::string& body, httplib::Response& response) {
        publish(session, body, response);
    });
    // Changes nothing, but is work.
    post("/api/lint", [](const std::string& body, httplib::Response& response) {
        answer(response, lint::asJSON(lint::lint(body)));
    });
}

} // namespace vx::tools::studio
