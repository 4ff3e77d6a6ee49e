#include "bench/IABApplication.h"

#include <fstream>
#include <utility>

namespace vx::bench {

namespace {

std::filesystem::path directoryWith(const IABApplication::Documents& documents,
                                    std::string_view name) {
    const auto directory = freshDirectory(name);
    std::ofstream(directory / "vendor-list.json") << documents.vendorList;
    if (!documents.configuration.empty())
        std::ofstream(directory / "privacy.json") << documents.configuration;
    return directory;
}

services::Settings settingsIn(const std::filesystem::path& directory) {
    services::Settings made = settings(directory / "choices.sqlite");
    made.packaged = directory;
    return made;
}

} // namespace

IABApplication::IABApplication(std::string_view name, const Documents& documents,
                               NotificationCenter* listener,
                               services::TCFLibrary::Settings settings)
    : directory_(directoryWith(documents, name)), services_(settingsIn(directory_)),
      iab_(services_.platform().store, services_.platform().logger, std::move(settings)),
      runtime_(platform(listener)) {
    engine().setSiteID(12, 5);
}

Platform IABApplication::platform(NotificationCenter* listener) {
    const Platform usual = services_.platform();
    Platform platform = listener ? withListener(usual, *listener) : usual;
    platform.iab = &iab_;
    return platform;
}

} // namespace vx::bench
