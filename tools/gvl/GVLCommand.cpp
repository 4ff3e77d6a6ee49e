#include <cstdint>
#include <iostream>
#include <memory>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/gvl/Generator.h"

namespace vx::tools {

namespace {

struct Arguments {
    std::uint32_t vendors = 0;
    std::uint32_t seed = 1;
};

} // namespace

void addGVL(CLI::App& app) {
    CLI::App* command =
        app.add_subcommand("gvl", "Print a vendor list of any size, with invented vendors");
    auto arguments = std::make_shared<Arguments>();
    command->add_option("--vendors", arguments->vendors, "How many, those deleted included")
        ->check(CLI::Range(0u, gvl::kMostVendors))
        ->required();
    command->add_option("--seed", arguments->seed, "Another list for each; the same for the same")
        ->capture_default_str();
    command->callback([arguments] {
        std::cout << gvl::generate(arguments->vendors, arguments->seed).dump() << '\n';
    });
}

} // namespace vx::tools
