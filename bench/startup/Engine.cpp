// The engine's start: opens the store, loads the offline copies, restores the saved entries into
// the tag SDK and checks their age.

#include <cstdlib>

#include "bench/startup/Ready.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/services/iab/TCFLibrary.h"
#include "vxprivacy/services/sdk/TagSDK.h"

int main(int, char** arguments) {
    const std::string nobody = "http://127.0.0.1:9";
    vx::services::Services services({
        .store = std::filesystem::path(arguments[1]) / "choices.sqlite",
        .hosts = {.configurationCDN = nobody, .vendorList = nobody, .consentCollector = nobody},
        .logLevel = 5,
    });
    vx::Platform platform = services.platform();
    vx::services::TCFLibrary iab(platform.store, platform.logger); // so that the list is loaded
    platform.iab = &iab;
    vx::Runtime runtime(platform);
    auto sdk = std::make_shared<vx::services::TagSDK>(platform.notifications,
                                                      [](const vx::services::TagSDK::Hit&) {});
    vx::VXMobilePrivacy::sharedInstance().setSiteID(12, 5, sdk);
    vx::bench::reportReady();

    auto& files = vx::VXConfigurationFileFactory::sharedInstance();
    const bool whole = files.getConfigurationFile("privacy") &&
                       files.getConfigurationFile("vendor-list") &&
                       sdk->permanentData().size() == 2200 && sdk->isOn();
    return whole ? EXIT_SUCCESS : EXIT_FAILURE;
}
