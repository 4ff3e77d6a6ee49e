#pragma once

namespace CLI {
class App;
}

namespace vx::tools {

/// Exit status of a command that cannot use what it was given.
inline constexpr int kUnusableInput = 2;
/// Exit status of a command whose standard output takes no more.
inline constexpr int kUnwritableOutput = 3;

// Each adds one subcommand. A command that fails reports it on standard error and throws
// `CLI::RuntimeError` with its exit status.
void addPlay(CLI::App& app);
void addLint(CLI::App& app);
void addGVL(CLI::App& app);
void addTC(CLI::App& app);
void addStudio(CLI::App& app);
/// Those that print completions and the manual; `app` must live as long as they may run.
void addDescriptions(CLI::App& app);

} // namespace vx::tools
