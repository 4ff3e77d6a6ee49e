#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/lint/FindingsReport.h"
#include "tools/lint/Lint.h"
#include "tools/system/Input.h"

namespace vx::tools {

namespace {

struct Arguments {
    std::vector<std::string> files{"-"};
    bool json = false;
};

// Nothing when the file cannot be read, which it has said then.
std::optional<std::vector<lint::Finding>> findingsIn(system::Input& input) {
    const auto text = input.read(lint::kLargestDocument);
    if (text)
        return lint::lint(*text);
    std::cerr << "vxprivacy lint: cannot read " << input.title() << '\n';
    return {};
}

void lintFiles(const Arguments& arguments) {
    int status = 0;
    lint::FindingsReport report(std::cout, arguments.json);
    for (const std::string& file : arguments.files) {
        system::Input input(file);
        const auto findings = findingsIn(input);
        status = std::max(status, findings ? int{!findings->empty()} : kUnusableInput);
        if (findings)
            report.add(*findings, input.title());
    }
    report.end();
    if (status != 0)
        throw CLI::RuntimeError(status);
}

} // namespace

void addLint(CLI::App& app) {
    CLI::App* command =
        app.add_subcommand("lint", "Check a privacy configuration before it is published");
    auto arguments = std::make_shared<Arguments>();
    command->add_option("FILE", arguments->files, "The documents; \"-\": standard input")
        ->capture_default_str();
    command->add_flag("--json", arguments->json, "Print the findings as a JSON array");
    command->footer(
        "Each finding says where it is, what users see because of it and how to mend "
        "it.\nThe exit status is 0 when there is nothing to mend, 1 when there is, and 2 "
        "when a file cannot be read.");
    command->callback([arguments] { lintFiles(*arguments); });
}

} // namespace vx::tools
