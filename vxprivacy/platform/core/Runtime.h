#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/platform/core/VXSingleton.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"

namespace vx {

class Application;
class IABLibrary;

/// Where the module's addresses begin: scheme and host, with a port where needed, no final slash
/// ("https://cdn.example.com").
struct VXPRIVACY_EXPORT Hosts {
    /// Has the privacy configurations, under "/mobile/SITE/PRIVACY/privacy.json".
    std::string configurationCDN;
    /// Has the IAB vendor list, "/v2/vendor-list.json", and its translations beside it.
    std::string vendorList;
    /// Takes the consent beacons, at "/privacy-consent/".
    std::string consentCollector;
};

/// The doors of the module, all in one place. What stands behind each is the application's choice:
/// take the struct that the services give and put your own objects in before you make the `Runtime`
/// on it. It owns none of them; they must outlive that `Runtime`.
struct VXPRIVACY_EXPORT Platform {
    /// Keeps the user's choices between two runs.
    KeyValueStore& store;
    /// Finds and updates the privacy configuration, the vendor list and the like.
    ConfigurationDocuments& documents;
    /// Carries what the engine tells others (start, stop, beacons) and what configuration files
    /// tell the engine.
    NotificationCenter& notifications;
    Logger& logger;
    const Clock& clock;
    /// Asked for the user agent and the SDK identifier, and for what a user identifier names.
    const Variables& coreVariables;
    /// Asked for what a user identifier names, before the core variables; only with a tag SDK.
    const Variables& predefinedVariables;
    Hosts hosts;
    /// Null when the IAB library is absent. Its presence at start-up turns the IAB mode on. Not
    /// owned, as the next one.
    IABLibrary* iab = nullptr;
    /// Opens the links of the screens. Null where no screen is shown; then no address is opened.
    Application* application = nullptr;
};

/// Connects the module with its doors and owns its shared instances.
///
/// An application makes one, before it calls anything else of the module, and keeps it until it
/// ends. The shared instances (`VXMobilePrivacy` and others) are made at first use; they end with
/// the runtime, the last made first, and references to them with them.
///
///     vx::services::Services services(settings);
///     vx::Runtime runtime(services.platform());
///     vx::VXMobilePrivacy::sharedInstance().setSiteID({.site = 12, .privacy = 5});
class VXPRIVACY_EXPORT Runtime {
public:
    /// Puts `platform` in force. While another runtime is in force, a new one is logged and
    /// ignored. After one has ended another may be made, as tests do.
    explicit Runtime(Platform platform);
    /// Ends the shared instances. The doors must still be there.
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    /// The runtime in force. Without one, a runtime on a platform where nothing is stored and
    /// nothing kept; the next one that is made logs that it was missed.
    static Runtime& current();

    /// The doors, good while this runtime is.
    const Platform& platform() const { return platform_; }

    /// The one instance of the class `type`, which the runtime owns. At first use `make` makes it,
    /// on the caller's thread. Safe on any thread.
    VXSingleton& shared(std::type_index type,
                        const std::function<std::unique_ptr<VXSingleton>()>& make);

private:
    struct WithoutEffect {};
    Runtime(Platform platform, WithoutEffect) : platform_(std::move(platform)) {}
    static Runtime& ofNothing();

    Platform platform_;
    std::recursive_mutex mutex_; // guards singletons_; making one may ask for another
    std::vector<std::pair<std::type_index, std::unique_ptr<VXSingleton>>> singletons_;
};

/// The doors of the runtime in force, good while it is.
inline const Platform& platform() {
    return Runtime::current().platform();
}

} // namespace vx
