// Sends commands to the process and waits for their end; a thread of the process takes its reports.

#include "tools/studio/world/ApplicationProcess.h"

#include <chrono>
#include <utility>

#include "tools/studio/shared/EventStream.h"

namespace vx::tools::studio {

namespace {

// A vendor list may be large and the machine slow.
constexpr std::chrono::seconds kReplyPatience{15};

} // namespace

Reply ApplicationProcess::start(const Launch& launch) {
    {
        const std::lock_guard lock(mutex_);
        running_ = true;
        endIsWanted_ = false;
        ++launches_;
    }
    process_ = std::make_unique<system::ChildProcess>(
        kApplicationCommand, [this](std::string_view line) { take(line); },
        [this] { processEnded(); });
    reportProcess();
    events_.append("process", "Application started, process " + std::to_string(process_->pid()));
    return perform({.name = command::kStart, .argument = asJSON(launch)});
}

Reply ApplicationProcess::perform(Command command) {
    const std::uint64_t id = command.id = ++lastCommand_;
    const std::string line = asJSON(command).dump(-1, ' ', false, Json::error_handler_t::replace);
    if (!process_ || !process_->send(line))
        return Problem{"the application is not running"};
    std::unique_lock lock(mutex_);
    if (!answered_.wait_for(lock, kReplyPatience, [&] { return lastDone_ >= id || !running_; }))
        return Problem{"the application does not answer"};
    if (lastDone_ < id)
        return Problem{"the application ended"};
    return lastReply_;
}

void ApplicationProcess::end() {
    if (!process_)
        return;
    {
        const std::lock_guard lock(mutex_);
        endIsWanted_ = true;
    }
    process_->end();
    process_.reset();
    events_.append("process", "Application ended");
}

void ApplicationProcess::kill() {
    if (!process_)
        return;
    {
        const std::lock_guard lock(mutex_);
        endIsWanted_ = true;
    }
    process_->kill();
    process_.reset();
    events_.append("process", "Application killed (SIGKILL)");
}

void ApplicationProcess::take(std::string_view line) {
    Result<Json> report = parsed(line);
    const std::string kind = report && report->is_object() ? report->value("kind", "") : "";
    if (kind == kind::kState) {
        events_.updateState("application", (*report)["body"]);
    } else if (kind == kind::kDone) {
        const std::lock_guard lock(mutex_);
        lastDone_ = report->value("id", std::uint64_t{0});
        lastReply_ = replyIn(report->value("reply", Json::object()));
        answered_.notify_all();
    } else if (!kind.empty()) {
        events_.append(std::move(*report));
    }
}

void ApplicationProcess::processEnded() {
    bool wanted = false;
    {
        const std::lock_guard lock(mutex_);
        running_ = false;
        wanted = endIsWanted_;
        answered_.notify_all();
    }
    reportDarkDisplay();
    reportProcess();
    if (!wanted)
        events_.append("process", "Application ended unexpectedly");
}

// What the process showed went with it; all else is as it left it.
void ApplicationProcess::reportDarkDisplay() {
    Json state = events_.state();
    if (!state.contains("application"))
        return;
    state["application"]["center"] = nullptr;
    events_.setState("application", std::move(state["application"]));
}

void ApplicationProcess::reportProcess() {
    const std::lock_guard lock(mutex_);
    events_.setState("process", {{"running", running_}, {"launches", launches_}});
}

} // namespace vx::tools::studio
