#include <cerrno>
#include <csignal>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"

namespace {

using namespace vx::tools;

void addHelp(CLI::App& app) {
    CLI::App* command = app.add_subcommand("help", "Explain a command");
    auto words = std::make_shared<std::vector<std::string>>();
    command->add_option("COMMAND", *words, "Its name and, where it has commands, theirs");
    command->callback([&app, words] {
        const CLI::App* explained = &app;
        std::string path = app.get_name();
        for (const std::string& word : *words) {
            explained = explained->get_subcommand(word);
            path += ' ' + explained->get_name();
        }
        // Its own `help` would hand over to the command that is being run: this one.
        std::cout << app.get_formatter()->make_help(explained, path, CLI::AppFormatMode::Normal);
    });
}

void describe(CLI::App& app) {
    app.set_version_flag("--version", VXPRIVACY_VERSION);
    app.require_subcommand(0, 1); // so that a file may be named like a command
    addPlay(app);
    addLint(app);
    addGVL(app);
    addTC(app);
    addStudio(app);
    addDescriptions(app);
    for (CLI::App* command : app.get_subcommands({}))
        command->set_version_flag("--version", VXPRIVACY_VERSION);
    addHelp(app);
}

int run(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
        if (app.get_subcommands().empty())
            throw CLI::RequiredError("A command (see --help)");
    } catch (const CLI::RuntimeError& failure) { // already reported
        return failure.get_exit_code();
    } catch (const CLI::Success& request) { // for help or the version
        return app.exit(request);
    } catch (const CLI::Error& error) {
        std::cerr << "vxprivacy: " << error.what() << '\n';
        return kUnusableInput;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    // A reader that went away and a file that may grow no more are told of like a full disk, and
    // end no studio.
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_IGN);
    CLI::App app("Consent management for C++ applications: tools for developers", "vxprivacy");
    describe(app);
    const int status = run(app, argc, argv);
    if (std::cout.flush())
        return status;
    std::cerr << "vxprivacy: the output cannot be written: "
              << std::system_category().message(errno) << '\n';
    return kUnwritableOutput;
}
