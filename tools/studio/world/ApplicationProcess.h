#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "tools/studio/shared/Protocol.h"
#include "tools/system/ChildProcess.h"

namespace vx::tools::studio {

class EventStream;

/// The application, a process of its own: started, told what to do, ended. What it reports goes
/// into the stream: its state as section "application", whether it runs as section "process", all
/// else as entries of the timeline. To be used on one thread at a time.
class ApplicationProcess {
public:
    explicit ApplicationProcess(EventStream& events) : events_(events) {}
    ~ApplicationProcess() { end(); }

    /// Starts a new process (the one before has ended) and returns when the engine has started.
    Reply start(const Launch& launch);
    /// Returns when the application has done it and reported its state.
    Reply perform(Command command);
    void end();
    void kill();

private:
    void take(std::string_view line);
    void processEnded();
    void reportDarkDisplay();
    void reportProcess();

    EventStream& events_;
    std::unique_ptr<system::ChildProcess> process_;
    std::uint64_t lastCommand_ = 0;

    std::mutex mutex_; // guards what follows
    std::condition_variable answered_;
    std::uint64_t lastDone_ = 0;
    Reply lastReply_{std::string()};
    int launches_ = 0;
    bool running_ = false;
    bool endIsWanted_ = false;
};

} // namespace vx::tools::studio
