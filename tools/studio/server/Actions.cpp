// The page's POST requests: takes their bodies apart and does what they ask of the session.

#include "tools/studio/server/Actions.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "tools/lint/FindingsReport.h"
#include "tools/lint/Lint.h"
#include "tools/studio/shared/Answers.h"
#include "tools/studio/shared/EventStream.h"
#include "tools/studio/shared/Routes.h"
#include "tools/studio/world/StudioSession.h"
#include "tools/tc/ModelJSON.h"

namespace vx::tools::studio {

namespace {

constexpr double kMillisecondsPerDay = 86'400'000.0;
constexpr double kMostDays = 200 * 366;

Json argument(const std::string& body, const char* name) {
    const Result<Json> arguments = parsed(body);
    return arguments && arguments->is_object() ? arguments->value(name, Json()) : Json();
}

Reply sendHit(StudioSession& session, const std::string& body) {
    const Json name = argument(body, "name");
    return session.hit(name.is_string() ? name.get<std::string>() : "screen_view");
}

Reply setNetwork(StudioSession& session, const std::string& body) {
    const Json on = argument(body, "on");
    if (!on.is_boolean())
        return Problem{"say {\"on\": true} or {\"on\": false}"};
    return session.setNetwork(on.get<bool>());
}

Reply setMode(StudioSession& session, const std::string& body) {
    const Json iab = argument(body, "iab");
    if (!iab.is_boolean())
        return Problem{"say {\"iab\": true} or {\"iab\": false}"};
    return session.setMode(iab.get<bool>() ? Mode::IAB : Mode::Category);
}

Reply setLanguage(StudioSession& session, const std::string& body) {
    const Json code = argument(body, "code");
    if (!code.is_string())
        return Problem{"say {\"code\": \"en\"} or another language's"};
    return session.setLanguage(code.get<std::string>());
}

Reply setPublisherTC(StudioSession& session, const std::string& body) {
    const Json on = argument(body, "on");
    if (!on.is_boolean())
        return Problem{"say {\"on\": true} or {\"on\": false}"};
    return session.setPublisherTC(on.get<bool>());
}

Reply setInForce(StudioSession& session, const std::string& body) {
    const Json on = argument(body, "on");
    if (!on.is_boolean())
        return Problem{"say {\"on\": true} or {\"on\": false}"};
    return session.setInForce(on.get<bool>());
}

Reply moveClock(StudioSession& session, const std::string& body) {
    const Json advance = argument(body, "advance");
    const Json days = advance.is_number() ? advance : argument(body, "offset");
    if (!days.is_number() || std::abs(days.get<double>()) > kMostDays)
        return Problem{"say {\"advance\": DAYS} or {\"offset\": DAYS}"};
    const std::chrono::milliseconds move(
        static_cast<std::int64_t>(days.get<double>() * kMillisecondsPerDay));
    return session.moveClock(advance.is_number() ? session.clockOffset() + move : move);
}

Reply openCenter(StudioSession& session, const std::string& body) {
    const Json width = argument(body, "width");
    const Json first = argument(body, "first");
    Presentation presentation;
    if (width.is_number())
        presentation.width = std::clamp(width.get<double>(), 100.0, 2000.0);
    if (first.is_number_integer() && first >= 0 && first <= 2)
        presentation.first = first.get<std::int32_t>();
    else if (!first.is_null())
        return Problem{"the first screen is 0, 1 or 2"};
    presentation.pushed = argument(body, "pushed") == true;
    return session.openCenter(presentation);
}

struct Action {
    const char* path;
    Reply (*perform)(StudioSession&, const std::string& body);
};
constexpr Action kActions[] = {
    {"/api/accept", [](StudioSession& session, const std::string&) { return session.accept(); }},
    {"/api/refuse", [](StudioSession& session, const std::string&) { return session.refuse(); }},
    {"/api/center/open", openCenter},
    {"/api/center/dismiss",
     [](StudioSession& session, const std::string&) { return session.dismissCenter(); }},
    {"/api/relaunch",
     [](StudioSession& session, const std::string&) { return session.relaunch(); }},
    {"/api/kill", [](StudioSession& session, const std::string&) { return session.killHard(); }},
    {"/api/reset", [](StudioSession& session, const std::string&) { return session.reset(); }},
    {"/api/hit", sendHit},
    {"/api/network", setNetwork},
    {"/api/clock", moveClock},
    {"/api/mode", setMode},
    {"/api/language", setLanguage},
    {"/api/publisher-tc", setPublisherTC},
    {"/api/in-force", setInForce},
    {"/api/session/next",
     [](StudioSession& session, const std::string&) { return session.playStep(); }},
    {"/api/session/close",
     [](StudioSession& session, const std::string&) { return session.closeScript(); }},
    {"/api/restrictions", [](StudioSession& session,
                             const std::string& body) { return session.shipRestrictions(body); }},
};

void publish(StudioSession& session, const httplib::Request& request, const std::string& text,
             httplib::Response& response) {
    StudioSession::Seen seen;
    if (request.has_param("over"))
        seen.version = std::strtoll(request.get_param_value("over").c_str(), nullptr, 10);
    if (request.has_param("iab"))
        seen.mode = request.get_param_value("iab") == "true" ? Mode::IAB : Mode::Category;
    try {
        const Result<Edition> edition = session.publish(text, seen);
        if (edition)
            answer(response, {{"version", edition->version}, {"text", *edition->text}});
        else
            answerError(response, edition.problem().isConflict ? 409 : 422, edition.problem());
    } catch (const std::system_error& error) {
        answerError(response, 500, {std::string("nothing was published: ") + error.what()});
    }
}

void rehearse(StudioSession& session, const std::string& text, httplib::Response& response) {
    const Result<Json> outcome = session.rehearse(text);
    if (outcome)
        answer(response, *outcome);
    else
        answerError(response, 422, outcome.problem());
}

} // namespace

void addActions(httplib::Server& server, StudioSession& session, const EventStream& events) {
    const auto post = [&](const char* path, TakeBody take) {
        addPost(server, path, kLargestBody, std::move(take));
    };
    for (const Action& action : kActions)
        post(action.path,
             [&](const httplib::Request&, const std::string& body, httplib::Response& response) {
                 if (const Reply reply = action.perform(session, body))
                     answer(response, events.state());
                 else
                     answerError(response, 409, reply.problem());
             });
    post("/api/configuration",
         [&](const httplib::Request& request, const std::string& body,
             httplib::Response& response) { publish(session, request, body, response); });
    post("/api/session",
         [&](const httplib::Request&, const std::string& body, httplib::Response& response) {
             if (const Reply opened = session.openScript(body))
                 answer(response, events.state());
             else
                 answerError(response, 422, opened.problem());
         });
    // These change nothing, but are work.
    post("/api/rehearse", [&](const httplib::Request&, const std::string& body,
                              httplib::Response& response) { rehearse(session, body, response); });
    post("/api/tc", [](const httplib::Request&, const std::string& body,
                       httplib::Response& response) { answer(response, tc::decodedAsJSON(body)); });
    post("/api/lint",
         [](const httplib::Request&, const std::string& body, httplib::Response& response) {
             answer(response, lint::asJSON(lint::lint(body)));
         });
}

} // namespace vx::tools::studio
