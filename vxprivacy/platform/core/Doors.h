#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

// The smaller doors: what the module asks of the core library beside the key-value store. All are
// used on the application's thread, and none throws.

namespace vx {

class VXConfigurationFile;

/// Takes the module's log lines.
class Logger {
public:
    virtual ~Logger();

    /// Levels: 1 tag SDK switched on or off, 2 start-up, 3 notes of the services, 4 problems.
    virtual void log(std::string_view message, int level) = 0;
};

/// Tells the time.
class Clock {
public:
    virtual ~Clock();

    /// Milliseconds since 1970, UTC.
    virtual std::uint64_t nowMilliseconds() const = 0;
};

/// Named facts about the device, the application and the installation.
class Variables {
public:
    virtual ~Variables();

    /// The value of the variable `name`, or nothing when there is no such variable.
    virtual std::optional<std::string> get(std::string_view name) const = 0;
};

/// Finds the documents of the registered configuration files and keeps them up to date.
class ConfigurationDocuments {
public:
    virtual ~ConfigurationDocuments();

    /// The identifiers that addresses are made of; told before any file is registered.
    virtual void initialise(std::int32_t siteID, std::int32_t containerID) = 0;

    /// `file` was registered, perhaps in place of another one of its name. The newest copy at hand
    /// is given to it with `setDocument` before this returns, without waiting for the network; a
    /// newer one that arrives later is given through `install`.
    virtual void registered(const std::shared_ptr<VXConfigurationFile>& file) = 0;
};

} // namespace vx
