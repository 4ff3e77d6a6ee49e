#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tools/studio/ChildProcess.h"
#include "tools/studio/Json.h"

namespace vx::tools::studio {

class EventStream;

/// What is wrong, for the user to read; nothing: it was done.
using Problem = std::optional<std::string>;

/// What the application answered.
struct Reply {
    Problem problem;
    std::string text{}; ///< empty when nothing was asked for
};

/// The application, a process of its own: started, told what to do, ended. What it reports goes
/// into the stream: its state as section "application", whether it runs as section "process", all
/// else as entries of the timeline. To be used on one thread at a time.
class ApplicationProcess {
public:
    explicit ApplicationProcess(EventStream& events) : events_(events) {}
    ~ApplicationProcess() { end(); }

    /// Starts a new process (the one before has ended) and returns when the engine has started.
    Problem launch(Json world);
    /// Returns when the application has done it and reported its state.
    Reply ask(Json command);
    Problem tell(Json command) { return ask(std::move(command)).problem; }
    void end();
    void kill();

private:
    void take(std::string_view line);
    void processEnded();
    void reportDarkDisplay();
    void reportProcess();

    EventStream& events_;
    std::unique_ptr<ChildProcess> process_;
    std::uint64_t lastCommand_ = 0;

    std::mutex mutex_; // guards what follows
    std::condition_variable answered_;
    std::uint64_t lastDone_ = 0;
    Json lastReply_;
    int launches_ = 0;
    bool running_ = false;
    bool endIsWanted_ = false;
};

} // namespace vx::tools::studio
