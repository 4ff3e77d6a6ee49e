#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/services/iab/TCFLibrary.h"

void runWithIAB() {
    vx::services::Settings settings{.store = "consent/choices.sqlite", .packaged = "resources"};
    settings.hosts.vendorList = "https://lists.example.com"; // yours; there is none by default
    vx::services::Services services(settings);
    vx::Platform platform = services.platform();
    vx::services::TCFLibrary iab(platform.store, platform.logger);
    platform.iab = &iab; // this turns the IAB mode on
    vx::Runtime runtime(platform);

    vx::VXMobilePrivacy& engine = vx::VXMobilePrivacy::sharedInstance();
    engine.setSiteID({.site = 12, .privacy = 5});
    engine.setLanguage("fr"); // of the vendor list's texts, and of the TC string
    engine.acceptAllConsent();
}
