#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/platform/core/VXSingleton.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// The registered configuration files, by name. It shares them with whoever registered them and
/// hands them to the door `ConfigurationDocuments`, which finds their documents. Application's
/// thread; no operation waits for the network.
///
///     VXConfigurationFileFactory& files = VXConfigurationFileFactory::sharedInstance();
///     files.addConfigurationFile("menu", "version");       // menu.json, shipped with the program
///     if (const auto file = files.getConfigurationFile("menu"))
///         file->getJSONDictionary()["title"].string();     // "Today", or absent
class VXPRIVACY_EXPORT VXConfigurationFileFactory : public VXSingleton {
public:
    /// The one factory, made at first use. Needs a `Runtime` and ends with it.
    static VXConfigurationFileFactory& sharedInstance();

    /// Tells the door the identifiers that the engine was started with.
    void initWithSiteID(std::int32_t siteID, std::int32_t containerID);

    // Registering. Takes the place of an earlier file of the name. When it returns, the newest copy
    // at hand is the file's document, or it has none; a newer one comes later, while the
    // application runs.

    /// Registers `file` under `name`. `listener` is not used: it listens to the file's notification
    /// already (see `VXPrivacyConfiguration::initPrivacyWithSiteID`).
    void addConfigurationFile(std::string_view name, std::shared_ptr<VXConfigurationFile> file,
                              IVXEventListenerDelegate& listener);
    /// Registers a plain file that is downloaded from `url`. Nobody is told of newer documents.
    void addConfigurationFile(std::string_view name, std::string_view versionPath,
                              std::string_view url);
    /// Registers a plain file that ships with the application and has no address.
    void addConfigurationFile(std::string_view name, std::string_view versionPath);

    /// The file registered under `name`, with a document; null when there is no such file, and also
    /// while none was found for it.
    std::shared_ptr<VXConfigurationFile> getConfigurationFile(std::string_view name) const;

    /// All registered files, those without a document too, in the order in which their names first
    /// came.
    const OrderedDictionary<std::shared_ptr<VXConfigurationFile>>& files() const { return files_; }

private:
    void add(std::string_view name, std::shared_ptr<VXConfigurationFile> file);

    OrderedDictionary<std::shared_ptr<VXConfigurationFile>> files_;
};

/// The same of the shared factory's file: `getConfigurationFile`.
VXPRIVACY_EXPORT std::shared_ptr<VXConfigurationFile> configurationFile(std::string_view name);

} // namespace vx
