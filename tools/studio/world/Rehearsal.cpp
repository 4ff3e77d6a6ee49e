// Launches an application on a fresh store, answers, and launches it again with the new edition.

#include "tools/studio/world/Rehearsal.h"

#include <chrono>
#include <string>
#include <system_error>

#include "tools/studio/shared/EventStream.h"
#include "tools/studio/world/ApplicationProcess.h"
#include "tools/studio/world/Backend.h"
#include "tools/studio/world/ScratchDirectory.h"
#include "tools/studio/world/SessionRecord.h"

namespace vx::tools::studio {

namespace {

using RehearsalClock = std::chrono::steady_clock;

constexpr const char* kOfEveryLaunch = "consentUpdated:"; // for what was restored
constexpr std::chrono::seconds kRehearsalPatience{15};    // with a document to arrive

bool hasDocuments(const Json& state, const Launch& launch, const Edition& edition) {
    const Json application = state.value("application", Json::object());
    const bool hasList = application.contains("vendorList") && !application["vendorList"].is_null();
    return application.value(Json::json_pointer("/configuration/version"), std::int64_t{-1}) ==
               edition.version &&
           (launch.mode == Mode::Category || hasList);
}

} // namespace

/// An application and its world, apart from all others.
class Rehearsal::Stage {
public:
    Stage(std::int32_t siteID, std::int32_t privacyID, const ServedVendorLists& vendorLists)
        : backend_(siteID, privacyID, vendorLists, events_) {}

    Result<Json> perform(Launch launch, const Edition& inForce, const Edition& next);
    void close() { application_.close(); }

private:
    Reply launchWith(const Launch& launch, const Edition& edition);
    Json callbacksAfter(std::uint64_t entry) const;

    const ScratchDirectory directory_;
    EventStream events_;
    SessionRecord record_{events_};
    Backend backend_;
    ApplicationProcess application_{events_, record_};
};

Result<Json> Rehearsal::run(Launch launch, const Edition& inForce, const Edition& next) {
    const std::lock_guard lock(alone_);
    const Result<std::shared_ptr<Stage>> stage = setUp();
    if (!stage)
        return stage.problem();
    Result<Json> outcome = (*stage)->perform(std::move(launch), inForce, next);
    const std::lock_guard end(mutex_);
    stage_.reset();
    return outcome;
}

void Rehearsal::stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    if (stage_)
        stage_->close();
}

Result<std::shared_ptr<Rehearsal::Stage>> Rehearsal::setUp() {
    const std::lock_guard lock(mutex_);
    if (stopped_)
        return Problem{"the studio is ending"};
    try {
        return stage_ = std::make_shared<Stage>(siteID_, privacyID_, vendorLists_);
    } catch (const std::system_error& error) {
        return Problem{error.what()};
    }
}

Result<Json> Rehearsal::Stage::perform(Launch launch, const Edition& inForce, const Edition& next) {
    if (!backend_.start(0))
        return Problem{"no port for the rehearsal's backend"};
    launch.store = directory_.path() / "store.sqlite";
    launch.host = backend_.address();
    if (const Reply launched = launchWith(launch, inForce); !launched)
        return launched.problem();
    if (const Reply accepted = application_.perform({.name = command::kAccept}); !accepted)
        return accepted.problem();
    // An answer that is not kept is none to come back with.
    const Json state = events_.state();
    if (const std::string problem =
            state.value(Json::json_pointer("/application/storeProblem"), "");
        !problem.empty())
        return Problem{"its store cannot be written: " + problem};
    application_.end();
    const EventStream::Entries before = events_.entriesAfter(0);
    if (const Reply launched = launchWith(launch, next); !launched)
        return launched.problem();
    return Json{{"decision", events_.state()["application"]["decision"]},
                {"callbacks", callbacksAfter(before.empty() ? 0 : before.back()->id)}};
}

Reply Rehearsal::Stage::launchWith(const Launch& launch, const Edition& edition) {
    backend_.publish(edition.text);
    if (Reply started = application_.start(launch); !started)
        return started;
    const auto end = RehearsalClock::now() + kRehearsalPatience;
    EventStream::Position seen;
    for (Json state = events_.state(); !hasDocuments(state, launch, edition);
         state = events_.state()) {
        if (!state["process"].value("running", false))
            return Problem{"the application ended"};
        if (RehearsalClock::now() > end)
            return Problem{"the application does not take up version " +
                           std::to_string(edition.version)};
        seen = events_.waitAfter(seen, std::chrono::milliseconds(100)).position;
    }
    return std::string();
}

Json Rehearsal::Stage::callbacksAfter(std::uint64_t entry) const {
    Json callbacks = Json::array();
    for (const auto& each : events_.entriesAfter(entry))
        if (each->kind == "callback" && each->title != kOfEveryLaunch)
            callbacks.push_back(each->title);
    return callbacks;
}

} // namespace vx::tools::studio
