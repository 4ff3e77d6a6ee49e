#include "services/core/Services.h"
#include "services/iab/TCFLibrary.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"

void runWithIAB() {
    vx::services::Services services({.store = "consent/choices.sqlite", .packaged = "resources"});
    vx::Platform platform = services.platform();
    vx::services::TCFLibrary iab(platform.store, platform.logger);
    platform.iab = &iab; // this turns the IAB mode on
    vx::Runtime runtime(platform);
    vx::VXIABPrivacyCenterViewController::registerWithEngine(); // for accept all and refuse all

    vx::VXMobilePrivacy& engine = vx::VXMobilePrivacy::sharedInstance();
    engine.setSiteID(12, 5);
    engine.setLanguage("fr"); // of the vendor list's texts, and of the TC string
    engine.acceptAllConsent();
}
