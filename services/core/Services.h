#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "vxprivacy/platform/core/Runtime.h"

namespace vx::services {

/// The hosts used unless an application names its own.
Hosts defaultHosts();

/// What an application decides about its services. Only `store` must be given.
struct Settings {
    /// The SQLite file of choices, waiting beacons and offline documents. Made, with its directory,
    /// when it is not there, for this user alone; it must not be a link. A file that is damaged or
    /// another program's gets another name, and an empty one is begun. While the file cannot be
    /// opened or written, everything works from memory and is written when that is possible again.
    std::filesystem::path store;
    /// Directory of the documents that ship with the application, NAME.json each; empty: none.
    std::filesystem::path packaged{};
    /// https, or plain http for loopback addresses only.
    Hosts hosts = defaultHosts();
    /// Named in beacons and in every request.
    std::string userAgent = "VXPrivacy";
    /// Lines below this level are not logged.
    int logLevel = 1;
    /// A log file beside standard error; rotated at 1 MiB, three kept.
    std::optional<std::filesystem::path> logFile{};
    /// Replaces the log altogether, level and file included.
    Logger* logger = nullptr;
    /// Null: the system's clock.
    const Clock* clock = nullptr;
    /// Null: one of its own.
    NotificationCenter* notifications = nullptr;
    /// Variables that the user identifier may name, beside the user agent and the SDK identifier.
    std::function<std::optional<std::string>(std::string_view name)> variables{};
};

/// Everything behind the module's doors: store, documents, HTTP, log, variables.
///
/// To be used on the application's thread alone. One worker thread of its own does the network; its
/// results take effect in `poll`. Nothing here waits for the network, the destructor included
/// (under 100 ms). Nothing throws; what goes wrong is logged.
///
/// libcurl is loaded at run time by the worker, which waits for the first `poll`, at most 50 ms.
/// Without it nothing is downloaded or posted, and all else works.
///
/// The SDK identifier of this installation is a random UUID under "VXSDKIdentifier" in the store.
class Services {
public:
    explicit Services(Settings settings);
    ~Services();
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

    /// The doors, for a `Runtime` that ends before these services do. The IAB library is absent;
    /// an application that wants it makes one (services/iab/TCFLibrary.h) and puts it in.
    Platform platform();

    /// Takes in what the worker finished: installs documents, settles beacons, retries what the
    /// disk refused. Cheap when there is nothing; to be called from the application's loop.
    void poll();
    /// `wakeUp` is called on the worker's thread when there is something for `poll` to do: an
    /// answer arrived, or it is time to try again. An application that polls then need not poll
    /// otherwise. It must return soon and call nothing of this class. To be set before start-up;
    /// null: nobody is called any more once this returns.
    void setWakeUp(std::function<void()> wakeUp);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace vx::services
