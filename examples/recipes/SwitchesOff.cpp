#include "vxprivacy/engine/VXMobilePrivacy.h"

void start() {
    vx::VXMobilePrivacy& engine = vx::VXMobilePrivacy::sharedInstance();
    engine.setSwitchDefaultState(false); // only what the user switches on is accepted
    engine.setSiteID({.site = 12, .privacy = 5});
}
