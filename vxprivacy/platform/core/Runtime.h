#pragma once

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/platform/core/VXSingleton.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

namespace vx {

class Application;
class IABLibrary;

/// Where the module's addresses begin: scheme and host, with a port where needed, no final slash
/// ("https://cdn.example.com").
struct Hosts {
    std::string configurationCDN;
    std::string vendorList;
    std::string consentCollector;
};

/// Everything that the module asks of its surroundings. What stands behind each door is the
/// application's choice; the doors must outlive the `Runtime` made on them.
struct Platform {
    KeyValueStore& store;
    ConfigurationDocuments& documents;
    NotificationCenter& notifications;
    Logger& logger;
    Clock& clock;
    Variables& coreVariables;
    Variables& predefinedVariables;
    Hosts hosts;
    /// Null when the IAB library is absent.
    IABLibrary* iab = nullptr;
    /// Null where no screen is shown; then no address is opened.
    Application* application = nullptr;
};

/// The module's life on one platform: made once, before anything else of the module is called, and
/// kept until the application ends. It holds the shared instances (`VXMobilePrivacy` and others),
/// which come into being at first use and go with it.
///
///     vx::services::Services services(settings);
///     vx::Runtime runtime(services.platform());
///     vx::VXMobilePrivacy::sharedInstance().setSiteID(12, 5);
class Runtime {
public:
    /// Installs `platform`. There may be one runtime at a time.
    explicit Runtime(Platform platform);
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    /// The runtime in force. Calling the module before one is made is a programming error.
    static Runtime& current();

    const Platform& platform() const { return platform_; }

    /// The one instance of `T`, made by `make` at first use. Safe on any thread.
    VXSingleton& shared(std::type_index type,
                        const std::function<std::unique_ptr<VXSingleton>()>& make);

private:
    Platform platform_;
    std::recursive_mutex mutex_; // guards singletons_; making one may ask for another
    std::vector<std::pair<std::type_index, std::unique_ptr<VXSingleton>>> singletons_;
};

/// The doors of the runtime in force.
inline const Platform& platform() {
    return Runtime::current().platform();
}

} // namespace vx
