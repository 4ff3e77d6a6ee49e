// The engine's start: opens the store, loads the offline copies, restores the saved entries into
// the tag SDK and checks their age.

#include "bench/startup/Ready.h"
#include "services/core/Services.h"
#include "services/sdk/TagSDK.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/iab/IABLibrary.h"

#include <cstdlib>

namespace {

// Present, so that the vendor list is loaded.
class Library : public vx::IABLibrary {
    void setCMPSDKID() override {}
    std::string getCreatedDate() const override { return {}; }
    void setPublisherRestrictions(const vx::PublisherRestrictions&) override {}
    void saveConsentString(std::string_view) override {}
    void resetTCData() override {}
    std::unique_ptr<vx::CoreStringBuilder> makeCoreStringBuilder() override { return nullptr; }
};

} // namespace

int main(int, char** arguments) {
    const std::string nobody = "http://127.0.0.1:9";
    Library library;
    vx::services::Services services({
        .store = std::filesystem::path(arguments[1]) / "choices.sqlite",
        .hosts = {.configurationCDN = nobody, .vendorList = nobody, .consentCollector = nobody},
        .logLevel = 5,
        .iab = &library,
    });
    vx::Runtime runtime(services.platform());
    auto sdk = std::make_shared<vx::services::TagSDK>(services.platform().notifications,
                                                      [](const vx::services::TagSDK::Hit&) {});
    vx::VXMobilePrivacy::sharedInstance().setSiteID(12, 5, sdk);
    vx::bench::reportReady();

    auto& files = vx::VXConfigurationFileFactory::sharedInstance();
    const bool whole = files.getConfigurationFile("privacy") &&
                       files.getConfigurationFile("vendor-list") &&
                       sdk->permanentData().size() == 2200 && sdk->isOn();
    return whole ? EXIT_SUCCESS : EXIT_FAILURE;
}
