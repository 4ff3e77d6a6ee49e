// Links the installed package, saves a choice and reads it back. Nothing listens at its hosts: an
// application starts and keeps choices without a network.

#include <cstdlib>
#include <iostream>
#include <string>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/services/core/Services.h"

int main() {
    const std::string nobody = "http://127.0.0.1:9";
    vx::services::Services services({
        .store = "consumer/choices.sqlite",
        .hosts = {.configurationCDN = nobody, .vendorList = nobody, .consentCollector = nobody},
        .logLevel = vx::kLogProblem,
    });
    vx::Runtime runtime(services.platform());
    vx::VXMobilePrivacy& engine = vx::VXMobilePrivacy::sharedInstance();
    engine.setSiteID({.site = 12, .privacy = 5});
    engine.saveConsent({{"PRIVACY_CAT_1", "1"}, {"PRIVACY_CAT_2", "0"}});
    services.poll();

    const bool kept =
        vx::VXPrivacyAPI::isCategoryAccepted(1) && !vx::VXPrivacyAPI::isCategoryAccepted(2);
    std::cout << (kept ? "The choice is kept.\n" : "The choice is lost.\n");
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
