#include <array>
#include <string>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"

namespace {

struct Partner {
    std::int32_t vendor;   // yours, 1 to 999
    std::int32_t category; // that it works for
};

constexpr std::array kPartners = {Partner{7, 3}, Partner{8, 3}, Partner{9, 1}};

} // namespace

// A screen of your own has a switch for each partner; this is its save.
void save(bool measurement, bool advertising, const std::array<bool, 3>& partners) {
    vx::ConsentDictionary consent = {{"PRIVACY_CAT_1", measurement ? "1" : "0"},
                                     {"PRIVACY_CAT_3", advertising ? "1" : "0"}};
    for (std::size_t i = 0; i < kPartners.size(); ++i)
        consent.set("PRIVACY_VEN_" + std::to_string(kPartners[i].vendor), partners[i] ? "1" : "0");
    vx::VXMobilePrivacy::sharedInstance().saveConsent(consent);
}

// Whether a partner may be called: it is agreed to, and so is what it works for.
bool mayUse(std::size_t partner) {
    return vx::VXPrivacyAPI::isVendorAccepted(kPartners.at(partner).vendor) &&
           vx::VXPrivacyAPI::isCategoryAccepted(kPartners.at(partner).category);
}
