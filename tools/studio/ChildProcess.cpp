#include "tools/studio/ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tools/studio/LineReader.h"
#include "tools/studio/Spawn.h"

namespace vx::tools::studio {

namespace {

struct Pipe {
    Descriptor read;
    Descriptor write;
};

Pipe makePipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) // no other child may hold an end
        throw std::system_error(errno, std::generic_category(), "pipe");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

} // namespace

ChildProcess::ChildProcess(const std::string& argument, OnLine onLine, OnEnd onEnd) {
    Pipe down = makePipe();
    Pipe up = makePipe();
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
    for (std::string_view rest = line; !rest.empty();) {
        const ssize_t written = write(input_.get(), rest.data(), rest.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
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
    while (waitpid(pid_, nullptr, 0) < 0 && errno == EINTR)
        continue;
    pid_ = -1;
}

} // namespace vx::tools::studio
