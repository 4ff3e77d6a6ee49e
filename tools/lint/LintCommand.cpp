#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/lint/FindingsReport.h"
#include "tools/lint/Lint.h"
#include "tools/system/Input.h"

namespace vx::tools {

namespace {

struct Arguments {
    std::string file = "-";
    bool json = false;
};

void lintFile(const Arguments& arguments) {
    system::Input input(arguments.file);
    const auto text = input.read(lint::kLargestDocument);
    if (!text) {
        std::cerr << "vxprivacy lint: cannot read " << input.title() << '\n';
        throw CLI::RuntimeError(kUnusableInput);
    }
    const auto findings = lint::lint(*text);
    if (arguments.json)
        std::cout << lint::asJSON(findings).dump(2) << '\n';
    else
        lint::print(findings, input.title(), std::cout);
    if (!findings.empty())
        throw CLI::RuntimeError(1);
}

} // namespace

void addLint(CLI::App& app) {
    CLI::App* command =
        app.add_subcommand("lint", "Check a privacy configuration before it is published");
    auto arguments = std::make_shared<Arguments>();
    command->add_option("FILE", arguments->file, "The document; \"-\": standard input")
        ->capture_default_str();
    command->add_flag("--json", arguments->json, "Print the findings as a JSON array");
    command->footer(
        "Each finding says where it is, what users see because of it and how to mend "
        "it.\nThe exit status is 0 when there is nothing to mend, 1 when there is, and 2 "
        "when the file cannot be read.");
    command->callback([arguments] { lintFile(*arguments); });
}

} // namespace vx::tools
