// The operations that play another session, in a world of its own.

#include <chrono>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <system_error>
#include <utility>

#include "tools/studio/shared/EventStream.h"
#include "tools/studio/world/StudioSession.h"

namespace vx::tools::studio {

namespace {

constexpr const char* kUsualWorld = R"({"do":"world"})";

Playback::Outcome outcomeOf(const Reply& reply) {
    if (reply)
        return {};
    return {.isDone = false, .note = "not done: " + reply.problem().text};
}

} // namespace

Reply StudioSession::openScript(const std::string& script) {
    if (options_.live)
        return Problem{"with --live its beacons would reach the real host"};
    Result<Playback> playback = Playback::of(script);
    if (!playback)
        return playback.problem();
    const std::lock_guard playing(playing_);
    if (Reply left = leavePlayed(); !left)
        return left;
    {
        const std::lock_guard lock(mutex_);
        playback_ = std::move(*playback);
        ++opened_;
    }
    reportPlayback();
    return std::string();
}

Reply StudioSession::playStep() {
    const std::lock_guard playing(playing_);
    if (!playback_)
        return Problem{"no session is open"};
    if (playback_->isAtEnd())
        return Problem{"the session is at its end"};
    Playback::Outcome outcome = play(playback_->next());
    {
        const std::lock_guard lock(mutex_);
        playback_->played(std::move(outcome));
    }
    reportPlayback();
    return std::string();
}

Reply StudioSession::closeScript() {
    const std::lock_guard playing(playing_);
    return leavePlayed();
}

Result<Json> StudioSession::scriptSteps(std::size_t first) const {
    const std::lock_guard lock(mutex_);
    if (!playback_)
        return Problem{"no session is open"};
    return playback_->steps(first);
}

Playback::Outcome StudioSession::play(const std::string& line) {
    try {
        const play::Step step = play::Step::parse(line);
        Playback::Outcome expected = expectedOutcome(step);
        if (!expected.note.empty())
            return expected;
        if (step.name() != "world") {
            if (!played_) // it begins in the usual one
                if (Reply entered = enterWorld(playedWorld(play::Step::parse(kUsualWorld)));
                    !entered)
                    return outcomeOf(entered);
            return outcomeOf(perform(step, line));
        }
        PlayedWorld world = playedWorld(step);
        const std::string leftOut = world.leftOut;
        Playback::Outcome outcome = outcomeOf(enterWorld(std::move(world)));
        if (outcome.isDone && !leftOut.empty())
            return {.isDone = false, .note = "without " + leftOut};
        return outcome;
    } catch (const play::StepError& error) {
        return outcomeOf(Problem{error.what()});
    } catch (const std::system_error& error) { // its directory
        return outcomeOf(Problem{error.what()});
    }
}

Reply StudioSession::perform(const play::Step& step, const std::string& line) {
    if (step.name() == "relaunch")
        return relaunchPlayed();
    Reply reply = perform({.name = command::kStep, .argument = line});
    if (!reply)
        return reply;
    const std::shared_lock beside(operation_);
    if (step.name() == "clock")
        noteClock(step.milliseconds("now"));
    if (step.name() == "install") {
        const std::lock_guard lock(mutex_);
        played_->launch["files"][step.text("name")] = step.text("text");
    }
    return reply;
}

Reply StudioSession::enterWorld(PlayedWorld world) {
    const Operation operation(operation_);
    const bool isFirst = !played_;
    if (isFirst) { // before anything ends: the directory may not come about
        const std::lock_guard lock(mutex_);
        played_.emplace(Json(), mode_, inForce_, clockOffset_, known());
    }
    application_.end();
    if (isFirst) {
        record_.begin();
        events_.append("studio", "A session is played, on a store of its own");
    }
    const Reply deleted = deleteStore();
    const Json store = std::move(world.launch["store"]);
    world.launch.erase("store");
    {
        const std::lock_guard lock(mutex_);
        played_->launch = std::move(world.launch);
        mode_ = world.mode;
        inForce_ = world.inForce;
        serveConfiguration();
    }
    reportCode();
    reportSession();
    noteClock(played_->launch["now"].get<std::uint64_t>());
    Reply launched = launchPlayed({}, {{"bare", true}, {"store", store}});
    return deleted ? launched : deleted;
}

Reply StudioSession::relaunchPlayed() {
    const Operation operation(operation_);
    application_.end();
    return launchPlayed(known(), {{"bare", true}});
}

Reply StudioSession::launchPlayed(const Known& known, Json beginning) {
    Launch launch = launchOf(known);
    launch.played.update(beginning);
    return application_.start(launch);
}

Reply StudioSession::leavePlayed() {
    {
        const std::lock_guard lock(mutex_);
        playback_.reset();
    }
    reportPlayback();
    if (!played_)
        return std::string();
    const Operation operation(operation_);
    application_.end();
    record_.end();
    const Known known = played_->known;
    {
        const std::lock_guard lock(mutex_);
        mode_ = played_->mode;
        inForce_ = played_->inForce;
        clockOffset_ = played_->clockOffset;
        played_.reset();
        serveConfiguration();
    }
    reportCode();
    reportSession();
    reportClock();
    events_.append("studio", "The session was closed: the application is back on its own store");
    return launch(known);
}

void StudioSession::noteClock(std::uint64_t now) {
    using namespace std::chrono;
    {
        const std::lock_guard lock(mutex_);
        played_->launch["now"] = now;
        clockOffset_ =
            milliseconds(now) - duration_cast<milliseconds>(system_clock::now().time_since_epoch());
    }
    reportClock();
}

void StudioSession::reportPlayback() {
    Json state;
    if (playback_) {
        state = playback_->state();
        state["opened"] = opened_;
    }
    events_.setState("playback", std::move(state));
}

} // namespace vx::tools::studio
