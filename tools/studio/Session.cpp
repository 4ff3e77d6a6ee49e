#include "tools/studio/Session.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "tools/studio/EventStream.h"

namespace vx::tools::studio {

namespace {

std::int64_t now() {
    return std::chrono::system_clock::now().time_since_epoch() / std::chrono::milliseconds(1);
}

} // namespace

Session::Session(const Options& options, Publication publication, EventStream& events)
    : options_(options), events_(events), publication_(std::move(publication)),
      backend_(options.site, options.privacy, events), application_(events) {
    events_.setState("session", {{"started", now()},
                                 {"live", options_.live},
                                 {"site", options_.site},
                                 {"privacy", options_.privacy},
                                 {"store", options_.store.string()}});
    events_.setState("clock", {{"offset", 0}});
}

Problem Session::start(int port) {
    const std::lock_guard lock(mutex_);
    if (!options_.live) {
        backend_.publish(publication_.inForce().text);
        reportPublished();
        if (!backend_.start(port))
            return "no port for the development backend";
    }
    reportNetwork();
    return launch();
}

void Session::stop() {
    const std::lock_guard lock(mutex_);
    application_.end();
    backend_.disconnect();
}

Problem Session::relaunch() {
    const std::lock_guard lock(mutex_);
    application_.end();
    return launch();
}

Problem Session::killHard() {
    const std::lock_guard lock(mutex_);
    application_.kill();
    return launch();
}

Problem Session::reset() {
    const std::lock_guard lock(mutex_);
    application_.end();
    deleteStore();
    events_.append("studio", "Fresh installation: the store was deleted");
    return launch();
}

Problem Session::moveClock(std::chrono::milliseconds offset) {
    const std::lock_guard lock(mutex_);
    clockOffset_ = offset;
    events_.setState("clock", {{"offset", offset.count()}});
    events_.append("studio", "The application's clock was moved",
                   {{"milliseconds ahead of the system's", offset.count()}});
    return application_.tell({{"do", "clock"}, {"offset", offset.count()}});
}

std::chrono::milliseconds Session::clockOffset() const {
    const std::lock_guard lock(mutex_);
    return clockOffset_;
}

Problem Session::setNetwork(bool on) {
    const std::lock_guard lock(mutex_);
    if (options_.live)
        return "the network is the real one with --live";
    if (!on)
        backend_.disconnect();
    else if (!backend_.connect())
        return "the backend's port " + backend_.address() + " was taken meanwhile";
    reportNetwork();
    events_.append("studio", on ? "The network is on" : "The network is off");
    return {};
}

Publication::Draft Session::published() const {
    const std::lock_guard lock(mutex_);
    return publication_.inForce();
}

Publication::Draft Session::publish(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (options_.live)
        return {.text = {}, .version = 0, .problem = "with --live the configuration is the host's"};
    Publication::Draft draft = publication_.publish(text);
    if (!draft.problem.empty())
        return draft;
    backend_.publish(draft.text);
    reportPublished();
    events_.append("studio",
                   "Privacy configuration published, version " + std::to_string(draft.version));
    return draft;
}

Reply Session::ask(Json command) {
    const std::lock_guard lock(mutex_);
    return application_.ask(std::move(command));
}

Problem Session::launch() {
    Json world = {
        {"store", options_.store.string()},
        {"site", options_.site},
        {"privacy", options_.privacy},
        {"clockOffset", clockOffset_.count()},
        {"cause", events_.state().value(Json::json_pointer("/application/decision/reason"), "")}};
    if (!options_.live)
        world["host"] = backend_.address();
    return application_.launch(std::move(world));
}

void Session::deleteStore() const {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
        std::error_code absent;
        std::filesystem::remove(options_.store.string() + suffix, absent);
    }
}

void Session::reportPublished() {
    events_.setState("published", {{"version", publication_.inForce().version}});
}

void Session::reportNetwork() {
    Json state = {{"on", options_.live || backend_.connected()}};
    if (!options_.live)
        state["address"] = backend_.address();
    events_.setState("network", std::move(state));
}

} // namespace vx::tools::studio
