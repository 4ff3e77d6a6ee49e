#include "tools/system/Spawn.h"

#include <csignal>
#include <system_error>

#include <spawn.h>
#include <unistd.h>

namespace vx::tools::system {

namespace {

struct Attributes {
    posix_spawnattr_t value;

    Attributes() {
        posix_spawnattr_init(&value);
        sigset_t none, all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&value, &none);
        posix_spawnattr_setsigdefault(&value, &all);
        posix_spawnattr_setpgroup(&value, 0);
        posix_spawnattr_setflags(&value, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                             POSIX_SPAWN_SETPGROUP);
    }
    ~Attributes() { posix_spawnattr_destroy(&value); }
};

struct FileActions {
    posix_spawn_file_actions_t value;

    explicit FileActions(const StandardStreams& streams) {
        posix_spawn_file_actions_init(&value);
        posix_spawn_file_actions_adddup2(&value, streams.input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&value, streams.output, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&value, streams.error, STDERR_FILENO);
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&value); }
};

} // namespace

pid_t spawn(std::vector<std::string> command, const StandardStreams& streams) {
    const Attributes attributes;
    const FileActions actions(streams);
    std::vector<char*> arguments;
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    pid_t pid = -1;
    const int error = posix_spawnp(&pid, arguments[0], &actions.value, &attributes.value,
                                   arguments.data(), environ);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), command[0]);
    return pid;
}

} // namespace vx::tools::system
