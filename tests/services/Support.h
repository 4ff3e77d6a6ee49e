#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "services/core/Services.h"
#include "tools/recording/RecordingDoors.h"
#include "vxprivacy/platform/core/Doors.h"

// What the tests of the services share.

namespace vx::services::test {

/// A directory of its own, gone with the object.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

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

/// Waits until `condition` holds; false when it does not within half a minute.
bool waitUntil(const std::function<bool()>& condition);

void writeFile(const std::filesystem::path& file, std::string_view text);
std::string readFile(const std::filesystem::path& file);

} // namespace vx::services::test
