#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/TestFiles.h"
#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/testing/RecordingDoors.h"

namespace vx::services::test {

using namespace tests; // what all folders share

/// Keeps log lines for looking at.
class LogLines : public Logger {
public:
    void log(std::string_view message, int level) override;

    /// How many lines of at least this level contain `part`.
    std::size_t count(std::string_view part, int level = 1) const;
    /// All lines, for the message of a failed test.
    std::string text() const;

private:
    std::vector<std::pair<std::string, int>> lines_;
};

/// Services on a directory, with a log and a clock to look into.
struct World {
    /// Services with their own settings; all else is filled in.
    explicit World(const std::filesystem::path& store, Settings settings = {});

    KeyValueStore& store() { return services.platform().store; }
    /// Polls until `condition` holds; false when it does not within half a minute.
    bool pollUntil(const std::function<bool()>& condition);

    LogLines log;
    recording::StandingClock clock{1'600'000'000'000};
    Services services;
};

} // namespace vx::services::test
