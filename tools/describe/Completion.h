#pragma once

#include <iosfwd>

namespace CLI {
class App;
}

namespace vx::tools::describe {

// Each prints a script that completes the command line: commands, options and file names.
void printBashCompletion(const CLI::App& app, std::ostream& output);
void printZshCompletion(const CLI::App& app, std::ostream& output);

} // namespace vx::tools::describe
