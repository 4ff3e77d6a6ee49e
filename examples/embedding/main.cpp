#include <iostream>
#include <thread>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/services/core/Services.h"

int main() {
    vx::services::Services services({.store = "consent/choices.sqlite", .packaged = "resources"});
    vx::Runtime runtime(services.platform());
    vx::VXMobilePrivacy& engine = vx::VXMobilePrivacy::sharedInstance();
    engine.setSiteID({.site = 12, .privacy = 5}); // your identifiers

    if (vx::VXPrivacyAPI::shouldDisplayPrivacyCenter()) {
        std::cout << "May we measure how you use this program? [y/n] " << std::flush;
        char answer = 'n';
        std::cin >> answer;
        answer == 'y' ? engine.acceptAllConsent() : engine.refuseAllConsent();
    }
    for (int frame = 0; frame < 100; ++frame) { // your event loop
        services.poll();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    std::cout << (vx::VXPrivacyAPI::isCategoryAccepted(1) ? "measuring\n" : "not measuring\n");
}
