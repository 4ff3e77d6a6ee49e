#include "tools/describe/Manual.h"

#include <ostream>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

#include "tools/describe/CommandLine.h"

namespace vx::tools::describe {

namespace {

// Text that troff takes for nothing else.
std::string literal(std::string_view text) {
    std::string result;
    bool lineBegins = true;
    for (const char c : text) {
        if (lineBegins && (c == '.' || c == '\''))
            result += "\\&";
        lineBegins = c == '\n';
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
    }
    return result;
}

std::string usageOf(const CLI::Option& option) {
    const std::string value =
        "\\fI" + literal(valueOf(option)) + "\\fR" + (option.get_expected_max() > 1 ? " ..." : "");
    return option.get_required() ? value : "[" + value + "]";
}

void printUsage(const Command& command, std::ostream& output) {
    output << ".TP\n\\fB" << literal(command.path) << "\\fR";
    if (!command.options().empty())
        output << " [\\fIoptions\\fR]";
    for (const CLI::Option* option : command.positionals())
        output << ' ' << usageOf(*option);
    output << '\n' << literal(command.app->get_description()) << ".\n";
}

void printOption(const CLI::Option& option, std::ostream& output) {
    output << ".TP\n";
    std::string_view separator;
    for (const std::string& name : namesOf(option)) {
        output << separator << "\\fB" << literal(name) << "\\fR";
        separator = ", ";
    }
    if (option.get_positional() || takesValue(option))
        output << (option.get_positional() ? "\\fI" : " \\fI") << literal(valueOf(option))
               << "\\fR";
    output << '\n' << literal(option.get_description()) << ".\n";
}

// A line that is indented, an example, stands as it is.
void printFooter(const std::string& footer, std::ostream& output) {
    if (footer.empty())
        return;
    output << ".PP\n";
    for (std::size_t begin = 0; begin < footer.size();) {
        const std::size_t end = std::min(footer.find('\n', begin), footer.size());
        const std::string line = footer.substr(begin, end - begin);
        output << (line.starts_with(' ') ? ".br\n" : "") << literal(line) << '\n';
        begin = end + 1;
    }
}

void printCommand(const Command& command, std::ostream& output) {
    output << ".SH "
           << (command.app->get_parent() ? "\"" + literal(command.path) + "\"" : "OPTIONS") << '\n';
    if (command.app->get_parent())
        output << literal(command.app->get_description()) << ".\n";
    for (const CLI::Option* option : command.positionals())
        printOption(*option, output);
    for (const CLI::Option* option : command.options())
        printOption(*option, output);
    printFooter(command.app->get_footer(), output);
}

} // namespace

void printManual(const CLI::App& app, std::ostream& output) {
    const auto commands = commandsOf(app);
    const std::string& name = app.get_name();
    output << ".TH " << name << " 1\n.SH NAME\n"
           << name << " \\- " << literal(app.get_description()) << "\n.SH SYNOPSIS\n";
    for (const Command& command : commands)
        if (command.app != &app)
            printUsage(command, output);
    for (const Command& command : commands)
        printCommand(command, output);
}

} // namespace vx::tools::describe
