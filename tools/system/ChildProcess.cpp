#include "tools/system/ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

#include "tools/system/Files.h"
#include "tools/system/LineReader.h"
#include "tools/system/Pipe.h"
#include "tools/system/Spawn.h"

namespace vx::tools::system {

ChildProcess::ChildProcess(const std::string& argument, OnLine onLine, OnEnd onEnd) {
    Pipe down;
    Pipe up;
    pid_ = spawn({"/proc/self/exe", argument}, {down.read.get(), up.write.get(), STDERR_FILENO});
    input_ = std::move(down.write);
    output_ = std::move(up.read);
    reader_ = std::thread([this, onLine = std::move(onLine), onEnd = std::move(onEnd)] {
        readLines(onLine);
        onEnd();
        const std::lock_guard lock(mutex_);
        closed_ = true;
        readerEnded_.notify_all();
    });
}

ChildProcess::~ChildProcess() {
    end();
}

bool ChildProcess::send(std::string line) {
    line += '\n';
    return writeAll(input_.get(), line);
}

void ChildProcess::end(std::chrono::milliseconds grace) {
    if (pid_ < 0)
        return;
    input_.reset();
    {
        std::unique_lock lock(mutex_);
        if (!readerEnded_.wait_for(lock, grace, [this] { return closed_; }))
            ::kill(pid_, SIGKILL);
    }
    reap();
}

void ChildProcess::kill() {
    if (pid_ < 0)
        return;
    ::kill(pid_, SIGKILL);
    reap();
}

void ChildProcess::readLines(const OnLine& onLine) const {
    LineReader output(output_.get());
    while (!output.ended()) {
        output.read();
        while (const std::optional<std::string> line = output.next())
            onLine(*line);
    }
}

void ChildProcess::reap() {
    reader_.join();
    while (::waitpid(pid_, nullptr, 0) < 0 && errno == EINTR)
        continue;
    pid_ = -1;
}

} // namespace vx::tools::system
