#include <cstdint>
#include <vector>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/services/iab/TCFLibrary.h"

void runWithFrameworkInForce() {
    vx::services::Services services({.store = "consent/choices.sqlite"});
    vx::Platform platform = services.platform();
    vx::services::TCFLibrary iab(platform.store, platform.logger,
                                 {.profile = vx::services::TCFProfile::InForce,
                                  .publisherCountry = "FR",
                                  .cmpID = 300, // yours, as the IAB gave it to you
                                  .cmpVersion = 1});
    platform.iab = &iab;
    vx::Runtime runtime(platform);
}

void acceptAfterOwnScreen(vx::services::TCFLibrary& iab) {
    const std::vector<std::int32_t> shown = {8, 24, 755};
    iab.setDisclosedVendors(shown);
    vx::VXMobilePrivacy::sharedInstance().acceptAllConsent();
}

void refuseAllButOneOfGoogles(vx::services::TCFLibrary& iab) {
    const std::vector<std::int32_t> accepted = {35};
    const std::vector<std::int32_t> shown = {9, 21, 35};
    iab.setAdditionalConsent(accepted, shown);
    vx::VXMobilePrivacy::sharedInstance().refuseAllConsent();
}

vx::services::Services servicesWithListsOfFormat3() {
    vx::services::Settings settings{.store = "consent/choices.sqlite"};
    settings.hosts.vendorList = "https://lists.example.com"; // "/v3/vendor-list.json" there
    settings.vendorListFormat = 3;
    return vx::services::Services(settings);
}
