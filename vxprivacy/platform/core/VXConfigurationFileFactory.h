#pragma once

#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/platform/core/VXSingleton.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace vx {

/// The registered configuration files, by name. Application's thread.
class VXConfigurationFileFactory : public VXSingleton {
public:
    static VXConfigurationFileFactory& sharedInstance();

    /// Tells the identifiers that addresses are made of.
    void initWithSiteID(std::int32_t siteID, std::int32_t containerID);

    /// Registers `file` under `name`, in place of an earlier one. Its document, if a copy is at
    /// hand, is loaded on return. `listener` hears of newer ones through the file's own
    /// notification, which it listens to already.
    void addConfigurationFile(std::string_view name, std::shared_ptr<VXConfigurationFile> file,
                              IVXEventListenerDelegate& listener);
    /// The same for a file with nothing of its own, downloaded from `url`.
    void addConfigurationFile(std::string_view name, std::string_view versionPath,
                              std::string_view url);
    /// The same for a file that ships with the application and has no address.
    void addConfigurationFile(std::string_view name, std::string_view versionPath);

    /// The file registered under `name`; null when there is none or no document was found for it.
    std::shared_ptr<VXConfigurationFile> getConfigurationFile(std::string_view name) const;

    /// All registered files in the order in which their names first came.
    const OrderedDictionary<std::shared_ptr<VXConfigurationFile>>& files() const { return files_; }

private:
    void add(std::string_view name, std::shared_ptr<VXConfigurationFile> file);

    OrderedDictionary<std::shared_ptr<VXConfigurationFile>> files_;
};

} // namespace vx
