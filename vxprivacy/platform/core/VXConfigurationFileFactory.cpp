#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"

#include <utility>

#include "vxprivacy/platform/core/Runtime.h"

namespace vx {

VXConfigurationFileFactory& VXConfigurationFileFactory::sharedInstance() {
    VXSingleton& shared = Runtime::current().shared(typeid(VXConfigurationFileFactory), [] {
        return std::make_unique<VXConfigurationFileFactory>();
    });
    return static_cast<VXConfigurationFileFactory&>(shared);
}

void VXConfigurationFileFactory::initWithSiteID(std::int32_t siteID, std::int32_t containerID) {
    platform().documents.initialise(siteID, containerID);
}

void VXConfigurationFileFactory::addConfigurationFile(std::string_view name,
                                                      std::shared_ptr<VXConfigurationFile> file,
                                                      IVXEventListenerDelegate&) {
    add(name, std::move(file));
}

void VXConfigurationFileFactory::addConfigurationFile(std::string_view name,
                                                      std::string_view versionPath,
                                                      std::string_view url) {
    auto file = std::make_shared<VXConfigurationFile>();
    file->setSiteID(0, 0, name, versionPath, std::string(url));
    add(name, std::move(file));
}

void VXConfigurationFileFactory::addConfigurationFile(std::string_view name,
                                                      std::string_view versionPath) {
    auto file = std::make_shared<VXConfigurationFile>();
    file->setPackaged(name, versionPath);
    add(name, std::move(file));
}

std::shared_ptr<VXConfigurationFile>
VXConfigurationFileFactory::getConfigurationFile(std::string_view name) const {
    const auto* file = files_.find(name);
    return file && (*file)->getJSONDictionary() ? *file : nullptr;
}

void VXConfigurationFileFactory::add(std::string_view name,
                                     std::shared_ptr<VXConfigurationFile> file) {
    files_.set(name, file);
    platform().documents.registered(file);
}

std::shared_ptr<VXConfigurationFile> configurationFile(std::string_view name) {
    return VXConfigurationFileFactory::sharedInstance().getConfigurationFile(name);
}

} // namespace vx
