#pragma once

#include <string_view>

namespace vx {

/// The core library's log.
class VXLogger {
public:
    static VXLogger& sharedInstance();

    /// Levels as `Logger::log` has them.
    void logMessage(std::string_view message, int level);
};

} // namespace vx
