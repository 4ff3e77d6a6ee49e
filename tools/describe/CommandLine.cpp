#include "tools/describe/CommandLine.h"

#include <CLI/CLI.hpp>

namespace vx::tools::describe {

namespace {

void append(const CLI::App& app, const std::string& path, std::vector<Command>& commands) {
    commands.push_back({path + app.get_name(), &app});
    const std::string below = commands.back().path + ' ';
    for (const CLI::App* command : commands.back().commands())
        append(*command, below, commands);
}

} // namespace

std::vector<const CLI::App*> Command::commands() const {
    const auto isForUsers = [](const CLI::App* command) { return !command->get_group().empty(); };
    return app->get_subcommands(isForUsers);
}

std::vector<const CLI::Option*> Command::options() const {
    return app->get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

std::vector<const CLI::Option*> Command::positionals() const {
    return app->get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<Command> commandsOf(const CLI::App& app) {
    std::vector<Command> commands;
    append(app, "", commands);
    return commands;
}

std::vector<std::string> namesOf(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames())
        names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

bool takesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

std::string valueOf(const CLI::Option& option) {
    if (option.get_positional())
        return option.get_name(true);
    const std::string type = option.get_type_name(); // followed by ":" and what is checked
    return type.substr(0, type.find(':'));
}

} // namespace vx::tools::describe
