#include "tools/studio/application/Decision.h"

#include <optional>
#include <string>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"

namespace vx::tools::studio {

namespace {

constexpr const char* kAsk = "Ask the user";
constexpr const char* kAskAgain = "Ask the user again";

struct Reason {
    const char* name;
    const char* text;        // within a line
    const char* headline;    // for the page, with
    const char* explanation; // below it
};

Reason reason(const std::string& cause) {
    if (!VXPrivacyAPI::shouldDisplayPrivacyCenter())
        return {"none", "the user need not be asked", "", ""};
    const std::optional<std::string> consent =
        VXUserDefaults::retrieveInfoFromUserDefaults(kVXPrivacyConsent);
    if (!consent)
        return {"first-start", "first start, no choice was ever made", kAsk,
                "First start: no choice was ever made."};
    if (consent->empty())
        return {"reset", "a new privacy configuration reset the saved choices", kAskAgain,
                "Reset: a new privacy configuration wiped the saved choices."};
    if (VXMobilePrivacy::sharedInstance().consentExpired())
        return {"expired", "the choice is older than 395 days", kAskAgain,
                "Expired: the choice is older than 395 days."};
    if (cause == "expired" || cause == "was-expired")
        return {"was-expired", "asked for when the choice was too old, and not answered yet",
                kAskAgain, "Asked for when the choice was too old, and not answered yet."};
    if (cause == "changed")
        return {"changed", "the privacy configuration changed significantly", kAskAgain,
                "Changed: the privacy configuration changed significantly."};
    return {"earlier", "asked for at an earlier start and not answered yet", kAskAgain,
            "Asked for at an earlier start and not answered yet."};
}

const char* stateInWords(std::int32_t privacyState) {
    return privacyState == 1   ? "consent given, the tag SDK runs"
           : privacyState == 2 ? "consent refused, the tag SDK is stopped"
                               : "no decision known";
}

} // namespace

Json decision(const std::string& cause) {
    const Reason why = reason(cause);
    const std::int64_t savedAt = VXPrivacyAPI::getLastTimeConsentWasSaved();
    return {
        {"mustAsk", VXPrivacyAPI::shouldDisplayPrivacyCenter()},
        {"reason", why.name},
        {"text", why.text},
        {"headline", why.headline},
        {"explanation", why.explanation},
        {"state", stateInWords(VXMobilePrivacy::sharedInstance().privacyState())},
        {"savedAt", savedAt},
        {"validUntil",
         savedAt == 0 ? 0 : static_cast<std::uint64_t>(savedAt) + kVXConsentExpirationDuration}};
}

} // namespace vx::tools::studio
