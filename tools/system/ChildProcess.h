#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <sys/types.h>

#include "tools/system/Descriptor.h"

namespace vx::tools::system {

/// A child process of this executable, spoken to in lines over its standard input and output. It
/// is in a process group of its own, so that Ctrl-C reaches it through its parent only, and is to
/// end when its standard input does.
class ChildProcess {
public:
    /// Takes a line of the child's, without its end, on a thread of this object's.
    using OnLine = std::function<void(std::string_view line)>;
    /// Called last on that thread, when the child closed its output.
    using OnEnd = std::function<void()>;

    /// Starts the executable with `argument`. Throws std::system_error when it cannot.
    ChildProcess(const std::string& argument, OnLine onLine, OnEnd onEnd);
    /// Ends the child.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }
    /// False when the child takes no more lines.
    bool send(std::string line);
    /// Closes its input and waits for its end; kills it when it takes longer than `grace`.
    void end(std::chrono::milliseconds grace = std::chrono::seconds(2));
    /// Kills it as a crash or the system would, and waits for its end.
    void kill();

private:
    void readLines(const OnLine& onLine) const;
    void reap();

    pid_t pid_ = -1;
    Descriptor input_;
    Descriptor output_;
    std::thread reader_;
    std::mutex mutex_; // guards closed_
    std::condition_variable readerEnded_;
    bool closed_ = false;
};

} // namespace vx::tools::system
