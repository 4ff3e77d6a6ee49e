#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// What the user decided. Every answer is read from the store at the moment of the call, so it is
/// right even before start-up. It needs a `Runtime`, not the engine. Application's thread; never
/// waits, never throws.
///
///     if (VXPrivacyAPI::shouldDisplayPrivacyCenter())
///         show();   // ask the user
///     VXPrivacyAPI::isCategoryAccepted(3);      // category 3 of the privacy configuration
///     VXPrivacyAPI::isVendorAccepted(1015);     // consent for IAB vendor 8: 1000 + 2 * 8 - 1
class VXPRIVACY_EXPORT VXPrivacyAPI {
public:
    /// Whether the user decided at all, whichever way. No again after a reset; consent that is too
    /// old still counts.
    static bool isConsentAlreadyGiven();
    /// Whether a privacy center must be shown: on a first start, when consent was found too old,
    /// and after a configuration change that asks for it.
    static bool shouldDisplayPrivacyCenter();
    /// Milliseconds since 1970; 0 when consent was never saved. A reset leaves it as it is.
    static std::int64_t getLastTimeConsentWasSaved();

    // IDs are stored IDs. An unknown one is not accepted. One that the last save left out, since
    // the configuration or the vendor list dropped it, is answered as the user last chose for it,
    // also after a reset.

    /// A category's own ID, or for IAB purpose n `kVXPurposeOffset` + 2n - 1 (consent) and + 2n
    /// (legitimate interest).
    static bool isCategoryAccepted(std::int32_t categoryID);
    /// A custom vendor's own ID, or for IAB vendor n `kVXVendorOffset` + 2n - 1 (consent) and + 2n
    /// (legitimate interest).
    static bool isVendorAccepted(std::int32_t vendorID);

    /// The full keys ("PRIVACY_CAT_3") of the entries that are listed, those of the last save that
    /// had any of the kind, and accepted; in the order in which they were saved.
    /// Empty when none is accepted. Time: the number of saved entries.
    static std::vector<std::string> getAcceptedCategories();
    static std::vector<std::string> getAcceptedVendors();
    static std::vector<std::string> getAcceptedFeatures();
    /// Categories, then vendors, then features.
    static std::vector<std::string> getAllAcceptedConsent();
};

} // namespace vx
