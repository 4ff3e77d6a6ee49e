#pragma once

#include <cstdint>
#include <string_view>

#include "vxprivacy/configuration/VXConfigurationChange.h" // exported with these
#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// Holder of the exported constants; it has no members. They are all below, and the two of
/// VXConfigurationChange.h.
class VXPRIVACY_EXPORT VXPrivacyConstants {};

// Found again in every user's store: never change one of these.
/// The global consent: "1" something is accepted, "0" nothing is, "" after a reset; absent before
/// the first decision.
inline constexpr std::string_view kVXPrivacyConsent = "PRIVACY_CONSENT";
/// When consent was last saved: milliseconds since 1970, in decimal; absent before the first save.
inline constexpr std::string_view kVXConsentTime = "TIMESTAMP";
/// With a number behind it, the key of a category's or IAB purpose's entry: "1" is accepted, any
/// other value is not.
inline constexpr std::string_view kVXCategoryPrefix = "PRIVACY_CAT_";
/// The same for vendors.
inline constexpr std::string_view kVXVendorPrefix = "PRIVACY_VEN_";
/// The same for IAB special features.
inline constexpr std::string_view kVXFeaturePrefix = "PRIVACY_FEAT_";
/// Lists of keys, of the last save that had any of the kind, each followed by ";":
/// "PRIVACY_CAT_1;PRIVACY_CAT_2;". Empty after a reset.
inline constexpr std::string_view kVXSavedCategories = "SAVED_CATEGORIES";
inline constexpr std::string_view kVXSavedVendors = "SAVED_VENDORS";
inline constexpr std::string_view kVXSavedFeatures = "SAVED_FEATURES";
/// "1": the privacy center must be shown; "0": it need not.
inline constexpr std::string_view kVXShouldDisplayPrivacyCenter = "VXShouldDisplayPrivacyCenter";
/// A key for applications that keep a vendor list of their own. Neither the module nor its services
/// keep anything under it: their offline copy is the store's, by the name of the configuration
/// file.
inline constexpr std::string_view kVXVendorListOfflineKey = "VXSavedVendorList";

/// Milliseconds; 395 days. Consent of exactly this age is still valid.
inline constexpr std::uint64_t kVXConsentExpirationDuration = 34128000000;

// Where the numbers of each kind of IAB item begin. Item n takes offset + 2n - 1 for consent and
// offset + 2n for legitimate interest (or opt-in). Below 1000 are the categories of the privacy
// configuration; nothing checks that they stay there.
/// Vendor 12 is 1023 and 1024.
inline constexpr std::int32_t kVXVendorOffset = 1000;
/// Purpose 1 is 10001 and 10002.
inline constexpr std::int32_t kVXPurposeOffset = 10000;
/// Special purposes are shown and never consented to; no entry is stored for one.
inline constexpr std::int32_t kVXSpePurposeOffset = 11000;
/// Features likewise.
inline constexpr std::int32_t kVXFeatureOffset = 12000;
/// Special feature 1 is 13002.
inline constexpr std::int32_t kVXSpeFeatureOffset = 13000;

/// Address of the privacy configuration: site ID, privacy ID, what is appended to the file's name,
/// and a number that tells requests apart.
inline constexpr std::string_view kVXConfigurationCDNURLStringFormat =
    "https://cdn.halvane.example/mobile/%d/%d/privacy%@.json?r=%d";
/// The version-1 vendor list; the engine loads version 2.
inline constexpr std::string_view kVXVendorListURL =
    "https://vendor-list.consensu.org/vendorlist.json";
/// A label for applications; the engine does not use it.
inline constexpr std::string_view kVXIABVendorList = "IAB Vendor to be displayed";

/// Type of the beacon of a privacy center that is shown.
inline constexpr std::string_view kVXTypeActionViewPrivacyCenter = "pc";
/// Type of the beacon of a save.
inline constexpr std::string_view kVXTypeActionSavePrivacyCenter = "pc_save";

/// Name of the configuration file that restricts what IAB vendors may do; optional.
inline constexpr std::string_view kVXPublisherRestrictionConfiguration =
    "VXIABPublisherRestrictions";
/// Name of the configuration file that holds the IAB vendor list.
inline constexpr std::string_view kVXVendorListConfiguration = "vendor-list";

/// The module's version, logged at start-up.
inline constexpr std::string_view kVXPrivacyVersion = "4.7.1";
/// The day of its release.
inline constexpr std::string_view kVXReleaseDate = "30/10/2020";
/// The time of day of its release.
inline constexpr std::string_view kVXReleaseTime = "08:46:07";

} // namespace vx
