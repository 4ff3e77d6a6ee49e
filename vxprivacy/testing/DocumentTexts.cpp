#include "vxprivacy/testing/DocumentTexts.h"

#include <utility>

#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"

namespace vx::recording {

void DocumentTexts::initialise(std::int32_t, std::int32_t) {}

void DocumentTexts::registered(const std::shared_ptr<VXConfigurationFile>& file) {
    if (const auto text = texts_.find(file->offlineName()); text != texts_.end())
        file->setDocument(VXConfigurationFile::getJSONDictionaryFromString(text->second));
}

void DocumentTexts::install(const std::string& name, const std::string& text) {
    const auto* registered = VXConfigurationFileFactory::sharedInstance().files().find(name);
    if (!registered)
        return;
    const std::shared_ptr<VXConfigurationFile> file = *registered;
    const std::string old = std::exchange(texts_[name], text);
    file->install(old, text, VXConfigurationFile::getJSONDictionaryFromString(text));
}

} // namespace vx::recording
