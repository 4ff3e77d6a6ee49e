#include "tools/studio/application/Decision.h"

#include <optional>
#include <string>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"

namespace vx::tools::studio {

namespace {

struct Reason {
    const char* name;
    const char* text;
};

Reason reason() {
    if (!VXPrivacyAPI::shouldDisplayPrivacyCenter())
        return {"none", "the user need not be asked"};
    const std::optional<std::string> consent =
        VXUserDefaults::retrieveInfoFromUserDefaults(kVXPrivacyConsent);
    if (!consent)
        return {"first-start", "first start, no choice was ever made"};
    if (consent->empty())
        return {"reset", "a new privacy configuration reset the saved choices"};
    if (VXMobilePrivacy::sharedInstance().consentExpired())
        return {"expired", "the choice is older than 395 days"};
    return {"changed", "the privacy configuration changed significantly"};
}

const char* stateInWords(std::int32_t privacyState) {
    return privacyState == 1   ? "consent given, the tag SDK runs"
           : privacyState == 2 ? "consent refused, the tag SDK is stopped"
                               : "no decision known";
}

} // namespace

Json decision() {
    const Reason why = reason();
    const std::int64_t savedAt = VXPrivacyAPI::getLastTimeConsentWasSaved();
    return {{"mustAsk", VXPrivacyAPI::shouldDisplayPrivacyCenter()},
            {"reason", why.name},
            {"text", why.text},
            {"state", stateInWords(VXMobilePrivacy::sharedInstance().privacyState())},
            {"savedAt", savedAt},
            {"validUntil",
             savedAt == 0 ? 0 : savedAt + static_cast<std::int64_t>(kVXConsentExpirationDuration)}};
}

} // namespace vx::tools::studio
