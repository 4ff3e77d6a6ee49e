#pragma once

namespace CLI {
class App;
}

namespace vx::tools::tc {

/// Adds the subcommand check: what a validator of today finds in TC strings.
void addCheck(CLI::App& app);

} // namespace vx::tools::tc
