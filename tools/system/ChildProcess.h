#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include <sys/types.h>

#include "tools/system/Descriptor.h"
#include "tools/system/WakeUp.h"

namespace vx::tools::system {

/// A child process of this executable, spoken to in lines over its standard input and output. It
/// is in a process group of its own, so that Ctrl-C reaches it through its parent only, and is to
/// end when its standard input does. A thread of this object's carries the lines and collects the
/// child as soon as it has ended. Any thread may call, while others wait for its end too.
class ChildProcess {
public:
    /// Takes a line of the child's, without its end, on that thread.
    using OnLine = std::function<void(std::string_view line)>;
    /// Called last on that thread, when the child was collected.
    using OnEnd = std::function<void()>;
    /// What the child is about, as the system sees it.
    enum class Activity { Working, Waiting, Stopped };

    /// Starts the executable with `argument`. Throws std::system_error when it cannot.
    ChildProcess(const std::string& argument, OnLine onLine, OnEnd onEnd);
    /// Ends the child.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }
    /// Never waits. False when the child takes no more lines, or leaves too much unread.
    bool send(std::string_view line);
    /// Closes its input and waits for its end; kills it when it is stopped or takes longer
    /// than `grace`.
    void end(std::chrono::milliseconds grace = std::chrono::seconds(2));
    /// Kills it as a crash or the system would, and waits for its end.
    void kill();
    Activity activity() const;

private:
    void run(const OnLine& onLine, const OnEnd& onEnd);
    void carry(const OnLine& onLine);
    void write();
    void reap();

    pid_t pid_ = -1;
    Descriptor exit_; // becomes readable when the child ends
    Descriptor output_;
    WakeUp wakeUp_;    // tells the thread of lines to write
    std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    Descriptor input_;
    std::string unwritten_;
    bool collected_ = false;
    bool ended_ = false;
    std::thread thread_; // last: it uses all else
};

} // namespace vx::tools::system
