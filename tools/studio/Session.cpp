#include "tools/studio/Session.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "tools/studio/Assets.h"
#include "tools/studio/EventStream.h"

namespace vx::tools::studio {

namespace {

std::int64_t currentTime() {
    return std::chrono::system_clock::now().time_since_epoch() / std::chrono::milliseconds(1);
}

} // namespace

Session::Session(const Options& options, VendorList vendorList, EventStream& events)
    : options_(options), vendorList_({{"version", vendorList.version},
                                      {"vendors", vendorList.vendors},
                                      {"file", options.gvl.string()}}),
      started_(currentTime()),
      events_(events), installations_{makeInstallation(options, vendorList, false),
                                      makeInstallation(options, vendorList, true)},
      iab_(options.iab), backend_(options.site, options.privacy, std::move(vendorList), events),
      application_(events) {
    reportSession();
    events_.setState("clock", {{"offset", 0}});
}

Problem Session::start(int port) {
    const std::lock_guard lock(mutex_);
    if (!options_.live) {
        serveConfiguration();
        if (!backend_.start(port))
            return "no port for the development backend";
    }
    reportNetwork();
    return launch({});
}

void Session::stop() {
    const std::lock_guard lock(mutex_);
    application_.end();
    backend_.disconnect();
}

Problem Session::relaunch() {
    const std::lock_guard lock(mutex_);
    application_.end();
    return launch(causeToAsk());
}

Problem Session::killHard() {
    const std::lock_guard lock(mutex_);
    application_.kill();
    return launch(causeToAsk());
}

Problem Session::reset() {
    const std::lock_guard lock(mutex_);
    application_.end();
    deleteStore();
    events_.append("studio", "Fresh installation: the store was deleted");
    return launch({});
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

Problem Session::setMode(bool iab) {
    const std::lock_guard lock(mutex_);
    if (iab == iab_)
        return {};
    application_.end();
    iab_ = iab;
    reportSession();
    if (!options_.live)
        serveConfiguration();
    events_.append("studio", iab ? "IAB mode: another installation, with a store of its own"
                                 : "Category mode: another installation, with a store of its own");
    return launch({});
}

Publication::Draft Session::published() const {
    const std::lock_guard lock(mutex_);
    return installation().publication.inForce();
}

std::string Session::sample() const {
    const std::lock_guard lock(mutex_);
    return asset(sampleName(iab_));
}

Publication::Draft Session::publish(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (options_.live)
        return {.text = {}, .version = 0, .problem = "with --live the configuration is the host's"};
    Publication::Draft draft = installation().publication.publish(text);
    if (!draft.problem.empty())
        return draft;
    serveConfiguration();
    events_.append("studio",
                   "Privacy configuration published, version " + std::to_string(draft.version));
    return draft;
}

Reply Session::ask(Json command) {
    const std::lock_guard lock(mutex_);
    return application_.ask(std::move(command));
}

Problem Session::launch(const std::string& cause) {
    Json world = {{"store", installation().store.string()},
                  {"site", options_.site},
                  {"privacy", options_.privacy},
                  {"iab", iab_},
                  {"clockOffset", clockOffset_.count()},
                  {"cause", cause}};
    if (!options_.live)
        world["host"] = backend_.address();
    return application_.launch(std::move(world));
}

// What the process before knew, which the store does not keep.
std::string Session::causeToAsk() const {
    return events_.state().value(Json::json_pointer("/application/decision/reason"), "");
}

void Session::deleteStore() const {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
        std::error_code absent;
        std::filesystem::remove(installation().store.string() + suffix, absent);
    }
}

void Session::reportSession() {
    events_.setState("session", {{"started", started_},
                                 {"live", options_.live},
                                 {"site", options_.site},
                                 {"privacy", options_.privacy},
                                 {"iab", iab_},
                                 {"vendorList", options_.live ? Json() : vendorList_},
                                 {"store", installation().store.string()}});
}

void Session::serveConfiguration() {
    const Publication::Draft draft = installation().publication.inForce();
    backend_.publish(draft.text);
    events_.setState("published", {{"version", draft.version}, {"iab", iab_}});
}

void Session::reportNetwork() {
    Json state = {{"on", options_.live || backend_.connected()}};
    if (!options_.live)
        state["address"] = backend_.address();
    events_.setState("network", std::move(state));
}

} // namespace vx::tools::studio
