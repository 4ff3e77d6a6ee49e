#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vx {

/// What the user decided. Every answer is read from the store at the moment of the call, so it is
/// right before start-up as well. Application's thread; never waits.
class VXPrivacyAPI {
public:
    /// Whether the user decided at all, whichever way.
    static bool isConsentAlreadyGiven();
    /// Whether a privacy center must be shown: on a first start, after expiry, and after a
    /// configuration change that asks for it.
    static bool shouldDisplayPrivacyCenter();
    /// Milliseconds since 1970; 0 when consent was never saved.
    static std::int64_t getLastTimeConsentWasSaved();

    /// IDs are stored IDs: a category's own, or for IAB purpose n `kVXPurposeOffset` + 2n - 1
    /// (consent) and + 2n (legitimate interest). An unknown one is not accepted.
    static bool isCategoryAccepted(std::int32_t categoryID);
    /// A custom vendor's own ID, or for IAB vendor n `kVXVendorOffset` + 2n - 1 (consent) and + 2n
    /// (legitimate interest).
    static bool isVendorAccepted(std::int32_t vendorID);

    /// The accepted entries' full keys ("PRIVACY_CAT_3"), in the order in which they were saved.
    static std::vector<std::string> getAcceptedCategories();
    static std::vector<std::string> getAcceptedVendors();
    static std::vector<std::string> getAcceptedFeatures();
    /// Categories, then vendors, then features.
    static std::vector<std::string> getAllAcceptedConsent();
};

} // namespace vx
