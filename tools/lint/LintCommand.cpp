#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "tools/Commands.h"
#include "tools/lint/Lint.h"
#include "tools/lint/Report.h"

#include <CLI/CLI.hpp>

namespace vx::tools {

namespace {

struct Arguments {
    std::string file = "-";
    bool json = false;
};

// All of `input`, or enough of it to see that it is too large; nothing when it cannot be read.
std::optional<std::string> readText(std::istream& input) {
    std::string text(lint::kLargestDocument + 1, '\0');
    input.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (input.bad() || (input.fail() && !input.eof()))
        return {};
    text.resize(static_cast<std::size_t>(input.gcount()));
    return text;
}

std::optional<std::string> readFile(const std::string& name) {
    if (name == "-") {
        std::ios::sync_with_stdio(false); // so that a failing read shows
        return readText(std::cin);
    }
    std::ifstream file(name, std::ios::binary);
    return file ? readText(file) : std::nullopt;
}

void lintFile(const Arguments& arguments) {
    const std::string name = arguments.file == "-" ? "standard input" : arguments.file;
    const auto text = readFile(arguments.file);
    if (!text) {
        std::cerr << "vxprivacy lint: cannot read " << name << '\n';
        throw CLI::RuntimeError(kUnusableInput);
    }
    const auto findings = lint::lint(*text);
    if (arguments.json)
        std::cout << lint::asJSON(findings).dump(2) << '\n';
    else
        lint::print(findings, name, std::cout);
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
