#pragma once

#include <iosfwd>

namespace CLI {
class App;
}

namespace vx::tools::describe {

/// Prints a page of the system's manual, section 1, in troff's language.
void printManual(const CLI::App& app, std::ostream& output);

} // namespace vx::tools::describe
