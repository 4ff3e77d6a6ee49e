#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/services/core/Status.h"

namespace vx::services {

/// The hosts that are used unless an application names its own: two examples, which resolve
/// nowhere, and none for the vendor list. The IAB's own host is for servers; applications may not
/// load from it.
VXPRIVACY_EXPORT Hosts defaultHosts();

/// What an application decides about its services. Only `store` must be given.
struct VXPRIVACY_EXPORT Settings {
    /// The SQLite file of choices, waiting beacons and offline documents. It is made, with its
    /// directory, when it is not there, and only this user may read it. It must not be a link. A
    /// damaged file or another program's is renamed, and an empty one is begun. While the file
    /// cannot be opened or written, everything works from memory, and is written as soon as that
    /// is possible again.
    std::filesystem::path store;
    /// The directory of the documents that ship with the application, NAME.json each. Empty: there
    /// are none.
    std::filesystem::path packaged{};
    /// https, or plain http for this machine (localhost, 127.0.0.0/8, ::1). Any other host is
    /// refused: it is logged, and nothing is sent to it. Nor is anything where one is empty, which
    /// is logged once.
    Hosts hosts = defaultHosts();
    /// Which form of the IAB's vendor list and of its translations is loaded: 2, from "/v2/" of its
    /// host, or 3, from "/v3/". Copies are kept by format, as the versions of each begin anew; what
    /// ships with the application has to be of this one.
    int vendorListFormat = 2;
    /// Named in beacons and in every request.
    std::string userAgent = "VXPrivacy";
    /// Log lines below this level, a `LogLevel`, are left out.
    int logLevel = kLogSwitching;
    /// A log file beside standard error, rotated at 1 MiB; three older ones are kept. Absent: none.
    /// One that cannot be opened is logged, and done without.
    std::optional<std::filesystem::path> logFile{};
    // The services own none of these three objects and use them to the end: each must be made
    // before them and destroyed after them.

    /// Takes all log lines instead, whatever the level; there is no log file then. Null: a log of
    /// the services' own.
    Logger* logger = nullptr;
    /// Null: the system's clock.
    const Clock* clock = nullptr;
    /// Null: one of the services' own. Whoever observes it removes itself before it dies.
    NotificationCenter* notifications = nullptr;
    /// Variables that the user identifier may name, beside the user agent and the SDK identifier:
    /// the value of `name`, absent when there is no such variable. Called on the application's
    /// thread. Empty function: there are no others.
    std::function<std::optional<std::string>(std::string_view name)> variables{};
};

/// What is behind the module's doors by default: store, documents, HTTP, log, variables.
///
/// Everything is called on one thread, the application's. Downloads and posts are done on a worker
/// thread; their results take effect in `poll`. Nothing here waits for the network. Nothing throws;
/// what goes wrong is logged.
///
/// The worker loads libcurl at run time, after the first `poll` or 50 ms after the first request.
/// Without libcurl nothing is downloaded or posted, and all else works.
///
/// The SDK identifier of this installation is a random UUID under "VXSDKIdentifier" in the store.
class VXPRIVACY_EXPORT Services {
public:
    /// Opens the store and reads it.
    explicit Services(Settings settings);
    /// Tries a last time to write what could not be written. Drops downloads that are under way;
    /// beacons that are under way stay in the store and are posted after the next start. Does not
    /// wait for the network: it takes less than 100 ms.
    ~Services();
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

    /// The doors, for a `Runtime` that ends before these services do, as they own what is behind
    /// them. The IAB library is absent; an application that wants it makes one
    /// (vxprivacy/services/iab/TCFLibrary.h) and puts it in.
    Platform platform();

    /// Takes in what the worker finished: installs documents, removes delivered beacons from the
    /// store, posts those that are due, and tries again to write what could not be written. Calls
    /// the application back where a document changed. To be called from the application's loop;
    /// cheap when there is nothing to do.
    void poll();
    /// `wakeUp` is called on the worker's thread whenever there is something for `poll` to do: an
    /// answer arrived, or it is time to try again. An application that polls then need not poll at
    /// other times. `wakeUp` must return soon and call nothing of this class. Set it before the
    /// module is started. Null: once this returns, nobody is called any more.
    void setWakeUp(std::function<void()> wakeUp);

    /// Whether what was saved is durable, what waits, and what went wrong last. From memory; on the
    /// application's thread, inside a callback too.
    Status status() const;
    /// `onDurable` is called by `poll`, last and outside of any transaction, when changes that had
    /// waited to be written became durable; where a wake-up is set, it comes first. It may call
    /// everything. Null: nobody is called.
    void setOnDurable(std::function<void()> onDurable);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace vx::services
