#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "tools/studio/shared/Protocol.h"
#include "tools/studio/world/DataWatch.h"
#include "tools/system/ChildProcess.h"

namespace vx::tools::studio {

class EventStream;
class SessionRecord;

/// The application, a process of its own: started, told what to do, ended. What it reports goes
/// into the stream: its state as section "application", whether it runs and has told a state
/// ("begun") as section "process", what is to be played again into the record, all else as entries
/// of the timeline. Any thread may call; to end or kill the process ends what others wait for.
class ApplicationProcess {
public:
    ApplicationProcess(EventStream& events, SessionRecord& record)
        : events_(events), record_(record), data_(events, record) {}
    ~ApplicationProcess() { close(); }

    /// Starts a new process (the one before has ended) and returns when the engine has started.
    Reply start(const Launch& launch);
    /// Returns when the application has done it and reported its state, or has been asleep over it
    /// for two seconds.
    Reply perform(Command command);
    void end();
    void kill();
    /// Ends it for good: no other is started.
    void close();

private:
    using Process = std::shared_ptr<system::ChildProcess>;

    void take(std::string_view line);
    void processEnded();
    Reply await(std::uint64_t id, const system::ChildProcess& process);
    void finish(const std::function<void(system::ChildProcess&)>& how, const char* title);
    void reportDarkDisplay();
    void reportProcess();
    void reportBegun();

    EventStream& events_;
    SessionRecord& record_;
    DataWatch data_;
    std::mutex mutex_; // guards what follows
    std::condition_variable answered_;
    Process process_;
    std::uint64_t lastCommand_ = 0;
    std::map<std::uint64_t, std::optional<Reply>> awaited_; // by the command's number
    int launches_ = 0;
    bool running_ = false;
    bool begun_ = false; // it has told how it stands
    bool endIsWanted_ = false;
    bool closed_ = false;
};

} // namespace vx::tools::studio
