#include "tests/support/ProgramRun.h"

#include <csignal>
#include <utility>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tools/system/Spawn.h"

namespace vx::tests {

namespace {

std::optional<std::string> nextOf(tools::system::LineReader& lines) {
    std::optional<std::string> line;
    while (!(line = lines.next()) && !lines.ended())
        lines.read();
    return line;
}

} // namespace

ProgramRun::ProgramRun(std::vector<std::string> command) {
    const tools::system::Descriptor nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    pid_ = tools::system::spawn(std::move(command),
                                {nothing.get(), output_.write.get(), errors_.write.get()});
    output_.write.reset();
    errors_.write.reset();
}

ProgramRun::~ProgramRun() {
    if (pid_ < 0)
        return;
    signal(SIGKILL);
    wait();
}

std::optional<std::string> ProgramRun::nextLine() {
    return nextOf(outputLines_);
}

std::string ProgramRun::errors() {
    std::string text;
    while (const std::optional<std::string> line = nextOf(errorLines_))
        text += *line + '\n';
    return text;
}

void ProgramRun::signal(int number) const {
    ::kill(pid_, number);
}

int ProgramRun::wait() {
    int status = 0;
    ::waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace vx::tests
