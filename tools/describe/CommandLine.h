#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace vx::tools::describe {

/// A command and the words that lead to it: "vxprivacy tc decode".
struct Command {
    std::string path;
    const CLI::App* app;

    /// The commands right below it that are not hidden from users.
    std::vector<const CLI::App*> commands() const;
    /// Its options without the positional ones.
    std::vector<const CLI::Option*> options() const;
    std::vector<const CLI::Option*> positionals() const;
};

/// `app` and all that are below it, each before its own.
std::vector<Command> commandsOf(const CLI::App& app);

/// "-h", "--help": all names of an option that is not positional.
std::vector<std::string> namesOf(const CLI::Option& option);
/// Whether a value stands after the option's name.
bool takesValue(const CLI::Option& option);
/// What stands for the option's value in a usage line: "FILE".
std::string valueOf(const CLI::Option& option);

} // namespace vx::tools::describe
