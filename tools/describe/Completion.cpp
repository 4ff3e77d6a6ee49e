#include "tools/describe/Completion.h"

#include <ostream>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

#include "tools/describe/CommandLine.h"

namespace vx::tools::describe {

namespace {

// A pattern for `case` that every command below the first matches.
void printPathPattern(const std::vector<Command>& commands, std::ostream& output) {
    for (std::size_t i = 1; i < commands.size(); ++i)
        output << (i > 1 ? "|" : "") << '"' << commands[i].path << '"';
}

std::string wordsAfter(const Command& command) {
    std::string words;
    for (const CLI::App* below : command.commands())
        words += below->get_name() + ' ';
    return words;
}

std::string optionsOf(const Command& command) {
    std::string words;
    for (const CLI::Option* option : command.options())
        for (const std::string& name : namesOf(*option))
            words += name + ' ';
    return words;
}

// Within single quotes, where `_arguments` and `_describe` take brackets and colons for their own.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text)
        if (c == '\'')
            result += "'\\''";
        else if (c == '[' || c == ']' || c == ':' || c == '\\')
            result += {'\\', c};
        else
            result += c;
    return result;
}

std::string fileOrText(const CLI::Option& option) {
    const std::string value = valueOf(option);
    return ":" + escaped(value) + (value.find("FILE") != std::string::npos ? ":_files" : ":");
}

void printZshOption(const CLI::Option& option, std::ostream& output) {
    for (const std::string& name : namesOf(option))
        output << " \\\n            '" << name << '[' << escaped(option.get_description()) << ']'
               << (takesValue(option) ? fileOrText(option) : "") << '\'';
}

void printZshArguments(const Command& command, std::ostream& output) {
    output << "        _arguments";
    for (const CLI::Option* option : command.options())
        printZshOption(*option, output);
    for (const CLI::Option* option : command.positionals())
        output << " \\\n            '" << (option->get_expected_max() > 1 ? "*" : "")
               << fileOrText(*option) << '\'';
    output << '\n';
}

void printZshCommands(const Command& command, std::ostream& output) {
    output << "        commands=(";
    for (const CLI::App* below : command.commands())
        output << "\n            '" << escaped(below->get_name()) << ':'
               << escaped(below->get_description()) << '\'';
    output << ")\n        _describe command commands\n";
}

} // namespace

void printBashCompletion(const CLI::App& app, std::ostream& output) {
    const auto commands = commandsOf(app);
    const std::string& name = app.get_name();
    output << "# Completes " << name << " in bash.\n\n_" << name << "() {\n"
           << "    local word=${COMP_WORDS[COMP_CWORD]} path=" << name << " i commands= options=\n"
           << "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
           << "        case \"$path ${COMP_WORDS[i]}\" in\n            ";
    printPathPattern(commands, output);
    output << ") path+=\" ${COMP_WORDS[i]}\" ;;\n        esac\n    done\n    case $path in\n";
    for (const Command& command : commands)
        output << "        \"" << command.path << "\") commands='" << wordsAfter(command)
               << "' options='" << optionsOf(command) << "' ;;\n";
    output << "    esac\n"
           << "    [[ $word == -* ]] && commands=$options\n"
           << "    COMPREPLY=($(compgen -W \"$commands\" -- \"$word\"))\n"
           << "}\n\ncomplete -o bashdefault -o default -F _" << name << ' ' << name << '\n';
}

void printZshCompletion(const CLI::App& app, std::ostream& output) {
    const auto commands = commandsOf(app);
    const std::string& name = app.get_name();
    output << "#compdef " << name << "\n# Completes " << name << " in zsh.\n\n_" << name
           << "() {\n    local command_path=" << name << " depth=0 i\n    local -a commands\n"
           << "    for ((i = 2; i < CURRENT; ++i)); do\n"
           << "        case \"$command_path $words[i]\" in\n            ";
    printPathPattern(commands, output);
    output << ") command_path+=\" $words[i]\" depth=$((i - 1)) ;;\n        esac\n    done\n"
           << "    (( CURRENT -= depth ))\n    shift $depth words\n    case $command_path in\n";
    for (const Command& command : commands) {
        output << "    \"" << command.path << "\")\n";
        if (!command.commands().empty())
            printZshCommands(command, output);
        printZshArguments(command, output);
        output << "        ;;\n";
    }
    output << "    esac\n}\n\n_" << name << " \"$@\"\n";
}

} // namespace vx::tools::describe
