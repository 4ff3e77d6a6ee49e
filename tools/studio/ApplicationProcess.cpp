#include "tools/studio/ApplicationProcess.h"

#include <chrono>
#include <utility>

#include "tools/studio/EventStream.h"
#include "tools/studio/application/Application.h"

namespace vx::tools::studio {

namespace {

// A vendor list may be large and the machine slow.
constexpr std::chrono::seconds kReplyPatience{15};

} // namespace

Problem ApplicationProcess::launch(Json world) {
    {
        const std::lock_guard lock(mutex_);
        running_ = true;
        endIsWanted_ = false;
        ++launches_;
    }
    process_ = std::make_unique<ChildProcess>(
        kApplicationCommand, [this](std::string_view line) { take(line); },
        [this] { processEnded(); });
    reportProcess();
    events_.append("process", "Application started, process " + std::to_string(process_->pid()));
    world["do"] = "start";
    return tell(std::move(world));
}

Reply ApplicationProcess::ask(Json command) {
    const std::uint64_t id = ++lastCommand_;
    command["id"] = id;
    const std::string line = command.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (!process_ || !process_->send(line))
        return {.problem = "the application is not running"};
    std::unique_lock lock(mutex_);
    if (!answered_.wait_for(lock, kReplyPatience, [&] { return lastDone_ >= id || !running_; }))
        return {.problem = "the application does not answer"};
    if (lastDone_ < id)
        return {.problem = "the application ended"};
    if (lastReply_.contains("problem"))
        return {.problem = lastReply_.value("problem", "")};
    return {.problem = {}, .text = lastReply_.value("text", "")};
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
    Json report = parsed(line);
    const std::string kind = report.is_object() ? report.value("kind", "") : "";
    if (kind == "state") {
        events_.setState("application", std::move(report["body"]));
    } else if (kind == "done") {
        const std::lock_guard lock(mutex_);
        lastDone_ = report.value("id", std::uint64_t{0});
        lastReply_ = report.value("reply", Json::object());
        answered_.notify_all();
    } else if (!kind.empty()) {
        events_.append(std::move(report));
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
