#pragma once

namespace vx {

/// Levels of log lines. They travel as integers; the higher the level, the more a line matters.
enum LogLevel : int {
    kLogSwitching = 1, ///< the tag SDK is switched on or off
    kLogStartUp = 2,   ///< the engine starts and says its version
    kLogNote = 3,      ///< of the services: what became of a document or a beacon
    kLogProblem = 4    ///< something is wrong that somebody should mend
};

} // namespace vx
