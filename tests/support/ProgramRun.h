#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "tools/system/LineReader.h"
#include "tools/system/Pipe.h"

namespace vx::tests {

/// A run of a program, with nothing to read: what it printed, and how it ended.
class ProgramRun {
public:
    /// Starts `command`, its program first. Throws std::system_error when it cannot.
    explicit ProgramRun(std::vector<std::string> command);
    /// Kills it if it still runs.
    ~ProgramRun();
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    /// The next line of standard output without its end, waited for; nothing when there are no
    /// more.
    std::optional<std::string> nextLine();
    /// The lines that are left of standard error, waited for until its end.
    std::string errors();
    pid_t pid() const { return pid_; }
    void signal(int number) const;
    /// Waits for the end; gives the exit status, or minus the signal.
    int wait();

private:
    tools::system::Pipe output_;
    tools::system::Pipe errors_;
    pid_t pid_ = -1;
    tools::system::LineReader outputLines_{output_.read.get()};
    tools::system::LineReader errorLines_{errors_.read.get()};
};

} // namespace vx::tests
