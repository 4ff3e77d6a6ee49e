#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/core/LogLevel.h"
#include "vxprivacy/platform/foundation/Export.h"

// The doors of the module are interfaces that the application may replace. Whatever the module
// needs from outside, it reaches through them. The services in vxprivacy/services stand behind them
// unless the application brings its own. The struct `Platform` has them all but the tag SDK, which
// is given at start-up. This header has the small ones; the others have a header each:
// KeyValueStore.h, NotificationCenter.h, Zentrix.h, IABLibrary.h, Application.h.
//
// Every door keeps these rules:
// - It is called on the application's thread, so it needs no lock. One exception: an engine that is
//   first asked for on another thread logs that it starts, and adds itself to the notification
//   center, there.
// - It throws nothing. What goes wrong counts as absent, or is made good later.
// - It never waits for the network: the application waits for the module's calls, and the module
//   for the door's.
// - A `std::string_view` that it is given is good until it returns.

namespace vx {

class VXConfigurationFile;

/// Takes the module's log lines.
class VXPRIVACY_EXPORT Logger {
public:
    virtual ~Logger();

    /// `level` is a `LogLevel`. `message` has no line break at its end but may have one inside, and
    /// may quote from documents and from the application: it is for reading, not for parsing.
    virtual void log(std::string_view message, int level) = 0;
};

/// Tells the time. Consent is stamped with it and grows old by it.
class VXPRIVACY_EXPORT Clock {
public:
    virtual ~Clock();

    /// Milliseconds since 1970, UTC. It may be set back: saved consent that then lies in the future
    /// counts as too old.
    virtual std::uint64_t nowMilliseconds() const = 0;
};

/// Facts about the device, the application and the installation, by name. The module asks two such
/// doors; `Platform` says which for what.
class VXPRIVACY_EXPORT Variables {
public:
    virtual ~Variables();

    /// The value of the variable `name`, or nothing when there is none. Unknown names are usual: an
    /// application's user identifier is first tried as a name.
    virtual std::optional<std::string> get(std::string_view name) const = 0;
};

/// Finds the documents of the registered configuration files and keeps them up to date.
class VXPRIVACY_EXPORT ConfigurationDocuments {
public:
    virtual ~ConfigurationDocuments();

    /// The identifiers that the engine is started with. Told at start-up, before it registers its
    /// files.
    virtual void initialise(std::int32_t siteID, std::int32_t containerID) = 0;

    /// `file` was registered, perhaps in place of another one of its name; from then on the other
    /// one is to be left alone. `file` says by its accessors where its document lies.
    ///
    /// Before this returns, the newest copy at hand is put in place; when there is none, nothing:
    /// with `file->install` where it is newer than the one that an earlier process used last, which
    /// an update of the application may bring, else with `file->setDocument`. A newer document that
    /// arrives later is put in place with `file->install`, on the application's thread.
    virtual void registered(const std::shared_ptr<VXConfigurationFile>& file) = 0;
};

} // namespace vx
