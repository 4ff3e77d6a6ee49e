#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/iab/IABLibrary.h"

namespace vx::services {

/// By which rules TC strings are made.
enum class TCFProfile {
    /// Policy version 2, without a segment of disclosed vendors.
    Specified,
    /// The framework of today, version 2.3; docs/tcf.md says what that takes.
    InForce
};

/// What an application decides; what does not say "in either profile" holds in
/// the profile `InForce` alone.
struct VXPRIVACY_EXPORT TCFSettings {
    /// By which rules the strings are made.
    TCFProfile profile = TCFProfile::Specified;
    /// Of the law that counts, ISO 3166-1 alpha-2: "FR". What is no such code becomes "AA",
    /// unknown, and is logged with each string: validators object to it.
    std::string publisherCountry = "AA";
    /// 2 to 4095, as the IAB gave it to the application; with any other there is no string.
    std::int32_t cmpID = kCMPID;
    /// 0 to 4095: the application's count of the changes to its way of asking.
    std::int32_t cmpVersion = 1;
    /// Whether the GDPR applies to this user; absent: not known, or not yet.
    std::optional<bool> gdprApplies = true;
    /// Whether the screens have other texts than the IAB's for stacks or illustrations.
    bool nonStandardTexts = false;
    /// The vendor list of strings that are made without the privacy center, which brings its
    /// own. Empty function: the engine's.
    std::function<JSONValue()> vendorList{};
    /// By this clock, which must outlive the library, TC data whose consent is older than 395 days
    /// at start-up is removed as by a reset, in either profile. Null: it stays until the next
    /// decision.
    const Clock* expiryClock = nullptr;
};

} // namespace vx::services
