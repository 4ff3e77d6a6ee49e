#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "vxprivacy/platform/core/Doors.h"

namespace spdlog {
class logger;
}

namespace vx::services {

/// Writes log lines to standard error and, where wanted, into a file that is rotated at 1 MiB.
class Log : public Logger {
public:
    /// Lines below `level` are left out. When the file cannot be opened, there is none.
    Log(int level, const std::optional<std::filesystem::path>& file);

    /// Of `message` one line, whatever is in it.
    void log(std::string_view message, int level) override;

private:
    const int level_;
    std::shared_ptr<spdlog::logger> logger_;
};

} // namespace vx::services
