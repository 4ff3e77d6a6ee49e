#pragma once

#include <string_view>

namespace vx {

// Names that the engine and the privacy centers have in common. Copies on users' devices are kept
// under the names of files: never change one.

/// Name of the privacy configuration among the configuration files.
inline constexpr std::string_view kPrivacyConfiguration = "privacy";
/// Where in their documents the IAB's vendor list and its translations have their version.
inline constexpr std::string_view kVendorListVersionPath = "vendorListVersion";
/// Name of the file that translates the IAB's texts, for a two-letter code: "purposes-fr".
inline constexpr std::string_view kTranslationFormat = "purposes-%@";

} // namespace vx
