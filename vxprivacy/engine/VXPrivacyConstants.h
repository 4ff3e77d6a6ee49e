#pragma once

#include "vxprivacy/configuration/VXConfigurationChange.h" // exported with these

#include <cstdint>
#include <string_view>

namespace vx {

/// Holder of the exported constants.
class VXPrivacyConstants {};

// Found again in every user's store: never change one of these.
inline constexpr std::string_view kVXPrivacyConsent = "PRIVACY_CONSENT"; ///< "1", "0" or ""
inline constexpr std::string_view kVXConsentTime = "TIMESTAMP"; ///< milliseconds since 1970
inline constexpr std::string_view kVXCategoryPrefix = "PRIVACY_CAT_";
inline constexpr std::string_view kVXVendorPrefix = "PRIVACY_VEN_";
inline constexpr std::string_view kVXFeaturePrefix = "PRIVACY_FEAT_";
/// Lists of saved keys, each key followed by ";".
inline constexpr std::string_view kVXSavedCategories = "SAVED_CATEGORIES";
inline constexpr std::string_view kVXSavedVendors = "SAVED_VENDORS";
inline constexpr std::string_view kVXSavedFeatures = "SAVED_FEATURES";
/// "1": the privacy center must be shown; "0": it need not.
inline constexpr std::string_view kVXShouldDisplayPrivacyCenter = "VXShouldDisplayPrivacyCenter";
/// Under which the offline copy of the IAB vendor list is kept.
inline constexpr std::string_view kVXVendorListOfflineKey = "VXSavedVendorList";

/// Milliseconds; 395 days. Consent of exactly this age is still valid.
inline constexpr std::uint64_t kVXConsentExpirationDuration = 34128000000;

// Where the numbers of each kind of IAB item begin. Item n takes offset + 2n - 1 for consent and
// offset + 2n for legitimate interest (or opt-in).
inline constexpr std::int32_t kVXVendorOffset = 1000;
inline constexpr std::int32_t kVXPurposeOffset = 10000;
inline constexpr std::int32_t kVXSpePurposeOffset = 11000;
inline constexpr std::int32_t kVXFeatureOffset = 12000;
inline constexpr std::int32_t kVXSpeFeatureOffset = 13000;

/// Address of the privacy configuration: site ID, privacy ID, what is appended to the file's name,
/// and a number that tells requests apart.
inline constexpr std::string_view kVXConfigurationCDNURLStringFormat =
    "https://cdn.halvane.example/mobile/%d/%d/privacy%@.json?r=%d";
/// The version-1 vendor list; the engine loads version 2.
inline constexpr std::string_view kVXVendorListURL =
    "https://vendor-list.consensu.org/vendorlist.json";
inline constexpr std::string_view kVXIABVendorList = "IAB Vendor to be displayed";

// Beacon types.
inline constexpr std::string_view kVXTypeActionViewPrivacyCenter = "pc";
inline constexpr std::string_view kVXTypeActionSavePrivacyCenter = "pc_save";

// Names of configuration files.
inline constexpr std::string_view kVXPublisherRestrictionConfiguration =
    "VXIABPublisherRestrictions";
inline constexpr std::string_view kVXVendorListConfiguration = "vendor-list";

inline constexpr std::string_view kVXPrivacyVersion = "4.7.1";
inline constexpr std::string_view kVXReleaseDate = "30/10/2020";
inline constexpr std::string_view kVXReleaseTime = "08:46:07";

} // namespace vx
