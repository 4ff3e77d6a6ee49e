#include <cstddef>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/gvl/Generator.h"
#include "tools/lint/FindingsReport.h"
#include "tools/lint/Lint.h"
#include "tools/system/Input.h"

namespace vx::tools {

namespace {

struct Arguments {
    std::uint32_t vendors = 0;
    std::uint32_t seed = 1;
    std::uint32_t format = 2;
    std::vector<std::string> files; // a vendor list and its translations
    bool json = false;
};

std::string read(system::Input& input) {
    auto text = input.read(lint::kLargestDocument);
    if (!text) {
        std::cerr << "vxprivacy gvl: cannot read " << input.title() << '\n';
        throw CLI::RuntimeError(kUnusableInput);
    }
    return std::move(*text);
}

void checkFiles(const std::vector<std::string>& files, bool json) {
    lint::FindingsReport report(std::cout, json);
    std::string list;
    bool isGood = true;
    for (std::size_t i = 0; i < files.size(); ++i) {
        system::Input input(files[i]);
        const std::string text = read(input);
        if (i == 0)
            list = text;
        const auto findings =
            i == 0 ? lint::lintVendorList(text) : lint::lintTranslation(text, list);
        report.add(findings, input.title());
        isGood = isGood && findings.empty();
    }
    report.end();
    if (!isGood)
        throw CLI::RuntimeError(1);
}

void printList(const std::string& list) {
    if (list.size() > lint::kLargestDocument)
        std::cerr << "vxprivacy gvl: no application takes this list: it has " << (list.size() >> 20)
                  << " MiB, and may have " << (lint::kLargestDocument >> 20) << '\n';
    std::cout << list << '\n';
}

} // namespace

void addGVL(CLI::App& app) {
    CLI::App* command = app.add_subcommand(
        "gvl", "Print a vendor list of any size, with invented vendors, or check one");
    auto arguments = std::make_shared<Arguments>();
    auto* vendors =
        command->add_option("--vendors", arguments->vendors, "How many, those deleted included")
            ->check(CLI::Range(0u, gvl::kMostVendors));
    command->add_option("--seed", arguments->seed, "Another list for each; the same for the same")
        ->capture_default_str()
        ->needs(vendors);
    command->add_option("--format", arguments->format, "The form of the list, 2 or 3")
        ->check(CLI::IsMember({2, 3}))
        ->capture_default_str()
        ->needs(vendors);
    auto* files = command
                      ->add_option("FILES", arguments->files,
                                   "Instead, a vendor list to be checked, and translations of it; "
                                   "\"-\": standard input")
                      ->excludes(vendors);
    command->add_flag("--json", arguments->json, "Print the findings as a JSON array")
        ->needs(files);
    command->footer(
        "A list, and a translation of it, is checked for purposes, features and data categories "
        "without a name: users would\nread \"- (null)\". The exit status is then as that of lint.");
    command->callback([arguments, vendors, files] {
        if (!*vendors && !*files)
            throw CLI::RequiredError("--vendors or a vendor list");
        if (*files)
            return checkFiles(arguments->files, arguments->json);
        printList(gvl::generate(arguments->vendors, arguments->seed,
                                static_cast<gvl::Format>(arguments->format))
                      .dump());
    });
}

} // namespace vx::tools
