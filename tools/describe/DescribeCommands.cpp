// The subcommands completion and manual, which describe the whole command line they belong to.

#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/describe/Completion.h"
#include "tools/describe/Manual.h"

namespace vx::tools {

void addDescriptions(CLI::App& app) {
    CLI::App* completion =
        app.add_subcommand("completion", "Print a script that completes the command line");
    auto shell = std::make_shared<std::string>();
    completion->add_option("SHELL", *shell, "bash or zsh")
        ->check(CLI::IsMember({"bash", "zsh"}))
        ->required();
    completion->footer("Example:\n  eval \"$(vxprivacy completion bash)\"");
    completion->callback([&app, shell] {
        if (*shell == "bash")
            describe::printBashCompletion(app, std::cout);
        else
            describe::printZshCompletion(app, std::cout);
    });
    CLI::App* manual = app.add_subcommand("manual", "Print the manual page");
    manual->footer("Example:\n  vxprivacy manual | man -l -");
    manual->callback([&app] { describe::printManual(app, std::cout); });
}

} // namespace vx::tools
