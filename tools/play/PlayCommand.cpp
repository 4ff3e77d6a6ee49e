#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/play/Player.h"
#include "tools/system/Input.h"

namespace vx::tools {

namespace {

void playFile(const std::string& name) {
    system::Input input(name);
    const bool allRan = play::Player(std::cout).run(input.stream());
    const bool readToTheEnd = !input.stream().bad() && (input.stream().eof() || !allRan);
    if (!readToTheEnd)
        std::cerr << "vxprivacy play: cannot read " << input.title() << '\n';
    if (!allRan || !readToTheEnd)
        throw CLI::RuntimeError(kUnusableInput);
}

} // namespace

void addPlay(CLI::App& app) {
    CLI::App* command = app.add_subcommand(
        "play", "Run a scripted consent session and print what the module did, line by line");
    auto file = std::make_shared<std::string>("-");
    command->add_option("FILE", *file, "The session, one JSON object a line; \"-\": standard input")
        ->capture_default_str();
    command->footer("Each step prints its effects; the session ends with status 2 at a step that "
                    "cannot be run.\nExample:\n"
                    "  {\"do\":\"setSiteID\",\"siteID\":12,\"privacyID\":5}\n"
                    "  {\"do\":\"acceptAllConsent\"}\n"
                    "  {\"do\":\"store\"}");
    command->callback([file] { playFile(*file); });
}

} // namespace vx::tools
