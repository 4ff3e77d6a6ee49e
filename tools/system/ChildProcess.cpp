// Nothing waits for the child but its thread, in one poll.

#include "tools/system/ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tools/system/LineReader.h"
#include "tools/system/Pipe.h"
#include "tools/system/Spawn.h"

namespace vx::tools::system {

namespace {

constexpr int kLastGrace = 2000; // milliseconds, for a child that closed its output
constexpr std::size_t kMostUnwritten = 32u << 20; // bytes

Descriptor handleOf(pid_t process) {
    Descriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    if (handle.get() < 0)
        throw std::system_error(errno, std::generic_category(), "pidfd_open");
    return handle;
}

bool isReadable(int fd) {
    pollfd wait{fd, POLLIN, 0};
    return ::poll(&wait, 1, 0) > 0;
}

} // namespace

ChildProcess::ChildProcess(const std::string& argument, OnLine onLine, OnEnd onEnd) {
    Pipe down;
    Pipe up;
    ::fcntl(down.write.get(), F_SETFL, O_NONBLOCK);
    pid_ = spawn({"/proc/self/exe", argument}, {down.read.get(), up.write.get(), STDERR_FILENO});
    exit_ = handleOf(pid_);
    input_ = std::move(down.write);
    output_ = std::move(up.read);
    thread_ = std::thread(
        [this, onLine = std::move(onLine), onEnd = std::move(onEnd)] { run(onLine, onEnd); });
}

ChildProcess::~ChildProcess() {
    end();
    thread_.join();
}

bool ChildProcess::send(std::string_view line) {
    const std::lock_guard lock(mutex_);
    if (input_.get() < 0 || unwritten_.size() + line.size() > kMostUnwritten)
        return false;
    unwritten_.append(line).append("\n");
    wakeUp_.signal();
    return true;
}

void ChildProcess::end(std::chrono::milliseconds grace) {
    {
        std::unique_lock lock(mutex_);
        unwritten_.clear();
        input_.reset();
        wakeUp_.signal();
        const bool canEnd = activity() != Activity::Stopped;
        if (changed_.wait_for(lock, canEnd ? grace : grace.zero(), [this] { return ended_; }))
            return;
    }
    kill();
}

void ChildProcess::kill() {
    std::unique_lock lock(mutex_);
    if (!collected_) // or the number may be another's by now
        ::kill(pid_, SIGKILL);
    changed_.wait(lock, [this] { return ended_; });
}

ChildProcess::Activity ChildProcess::activity() const {
    std::ifstream file("/proc/" + std::to_string(pid_) + "/stat");
    const std::string status{std::istreambuf_iterator<char>(file), {}};
    const std::size_t nameEnd = status.rfind(") "); // the state's letter stands behind it
    const char state = nameEnd == std::string::npos ? ' ' : status[nameEnd + 2];
    return state == 'R' || state == 'D'   ? Activity::Working
           : state == 'T' || state == 't' ? Activity::Stopped
                                          : Activity::Waiting;
}

void ChildProcess::run(const OnLine& onLine, const OnEnd& onEnd) {
    carry(onLine);
    reap();
    onEnd();
    const std::lock_guard lock(mutex_);
    ended_ = true;
    changed_.notify_all();
}

// Until the child closed its output, or has ended and all that it said was read.
void ChildProcess::carry(const OnLine& onLine) {
    LineReader output(output_.get());
    for (bool exited = false; !output.ended() && !(exited && !isReadable(output_.get()));) {
        pollfd waits[] = {{output_.get(), POLLIN, 0},
                          {exit_.get(), POLLIN, 0},
                          {wakeUp_.descriptor(), POLLIN, 0},
                          {-1, POLLOUT, 0}};
        {
            const std::lock_guard lock(mutex_);
            waits[3].fd = unwritten_.empty() ? -1 : input_.get();
        }
        ::poll(waits, std::size(waits), -1);
        exited = waits[1].revents != 0;
        if (waits[2].revents != 0)
            wakeUp_.clear();
        write();
        if (waits[0].revents != 0)
            output.read();
        while (const std::optional<std::string> line = output.next())
            onLine(*line);
    }
}

// As much as the pipe takes now.
void ChildProcess::write() {
    const std::lock_guard lock(mutex_);
    while (!unwritten_.empty()) {
        const ssize_t written = ::write(input_.get(), unwritten_.data(), unwritten_.size());
        if (written < 0 && errno == EAGAIN)
            return;
        if (written < 0 && errno != EINTR) {
            unwritten_.clear();
            input_.reset();
        } else if (written > 0) {
            unwritten_.erase(0, static_cast<std::size_t>(written));
        }
    }
}

void ChildProcess::reap() {
    pollfd exit{exit_.get(), POLLIN, 0};
    const bool exited = ::poll(&exit, 1, kLastGrace) > 0;
    const std::lock_guard lock(mutex_);
    input_.reset();
    if (!exited)
        ::kill(pid_, SIGKILL);
    while (::waitpid(pid_, nullptr, 0) < 0 && errno == EINTR)
        continue;
    collected_ = true;
}

} // namespace vx::tools::system
