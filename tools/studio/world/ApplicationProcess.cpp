// Sends commands to the process and waits for their end; a thread of the process takes its reports.

#include "tools/studio/world/ApplicationProcess.h"

#include <chrono>
#include <utility>

#include "tools/studio/shared/EventStream.h"
#include "tools/studio/world/SessionRecord.h"

namespace vx::tools::studio {

namespace {

using SteadyClock = std::chrono::steady_clock;

// Of an application that sleeps over a command;
constexpr std::chrono::milliseconds kSleepingPatience{1800};
// of one that works on it: a vendor list may be large and the machine slow.
constexpr std::chrono::seconds kWorkingPatience{15};

} // namespace

Reply ApplicationProcess::start(const Launch& launch) {
    {
        const std::lock_guard lock(mutex_);
        if (closed_)
            return Problem{"the studio is ending"};
        process_ = std::make_shared<system::ChildProcess>(
            kApplicationCommand, [this](std::string_view line) { take(line); },
            [this] { processEnded(); });
        running_ = true;
        begun_ = false;
        endIsWanted_ = false;
        ++launches_;
        events_.append("process",
                       "Application started, process " + std::to_string(process_->pid()));
    }
    reportProcess();
    return perform({.name = command::kStart, .argument = asJSON(launch)});
}

Reply ApplicationProcess::perform(Command command) {
    Process process;
    {
        const std::lock_guard lock(mutex_);
        if (!running_)
            return Problem{"the application is not running"};
        process = process_;
        command.id = ++lastCommand_;
        awaited_[command.id];
    }
    const std::string line = dumped(asJSON(command));
    Reply reply = process->send(line) ? await(command.id, *process)
                                      : Problem{"the application takes no more commands"};
    const std::lock_guard lock(mutex_);
    awaited_.erase(command.id);
    return reply;
}

Reply ApplicationProcess::await(std::uint64_t id, const system::ChildProcess& process) {
    using Activity = system::ChildProcess::Activity;
    const auto end = SteadyClock::now() + kWorkingPatience;
    std::unique_lock lock(mutex_);
    const auto isAnswered = [&] { return awaited_[id] || !running_ || process_.get() != &process; };
    while (!answered_.wait_for(lock, kSleepingPatience, isAnswered)) {
        const Activity activity = process.activity();
        if (activity == Activity::Stopped)
            return Problem{"the application is stopped and does not answer"};
        if (activity == Activity::Waiting || SteadyClock::now() > end)
            return Problem{"the application does not answer"};
    }
    return awaited_[id].value_or(Problem{"the application ended"});
}

void ApplicationProcess::end() {
    finish([](system::ChildProcess& process) { process.end(); }, "Application ended");
}

void ApplicationProcess::kill() {
    finish([](system::ChildProcess& process) { process.kill(); }, "Application killed (SIGKILL)");
}

void ApplicationProcess::close() {
    {
        const std::lock_guard lock(mutex_);
        closed_ = true;
    }
    end();
}

void ApplicationProcess::finish(const std::function<void(system::ChildProcess&)>& how,
                                const char* title) {
    Process process;
    bool ran = false;
    {
        const std::lock_guard lock(mutex_);
        process = process_;
        ran = std::exchange(endIsWanted_, true) ? false : running_;
    }
    if (!process)
        return;
    how(*process);
    if (ran) // who asks first reports it
        events_.append("process", title);
}

void ApplicationProcess::take(std::string_view line) {
    Result<Json> report = parsed(line);
    const std::string kind = report && report->is_object() ? report->value("kind", "") : "";
    if (kind == kind::kState) {
        data_.look((*report)["body"]);
        events_.updateState("application", (*report)["body"]);
        reportBegun();
    } else if (kind == kind::kLaunch) {
        record_.launched(std::move((*report)["body"]));
    } else if (kind == kind::kStep) {
        record_.add((*report)["body"]);
    } else if (kind == kind::kDone) {
        const std::lock_guard lock(mutex_);
        const auto awaited = awaited_.find(report->value("id", std::uint64_t{0}));
        if (awaited != awaited_.end())
            awaited->second = replyIn(report->value("reply", Json::object()));
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
    events_.setState("process",
                     {{"running", running_}, {"begun", begun_}, {"launches", launches_}});
}

void ApplicationProcess::reportBegun() {
    {
        const std::lock_guard lock(mutex_);
        if (std::exchange(begun_, true))
            return;
    }
    reportProcess();
}

} // namespace vx::tools::studio
