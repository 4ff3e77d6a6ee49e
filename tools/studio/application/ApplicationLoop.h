#pragma once

namespace vx::tools::studio {

/// Runs an application for the studio to watch: takes commands on standard input, reports on
/// standard output (shared/Protocol.h), and returns when its input ends.
void runApplication();

} // namespace vx::tools::studio
