#pragma once

#include <memory>
#include <string_view>

#include "vxprivacy/engine/IABPrivacyCenter.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// Makes the consent of accept all and refuse all. Saves nothing itself.
class GlobalDecision {
public:
    /// How the IAB privacy center is made, from now on and in the whole process. Null: none again.
    static void registerIABPrivacyCenter(IABPrivacyCenterFactory factory);

    /// Every category and subcategory of the privacy configuration with `value`, in its order; one
    /// whose ID holds no number is number 0. Empty without a configuration.
    static ConsentDictionary ofCategories(std::string_view value);
    /// An IAB privacy center whose `savedConsent` has all that it would list, with `value`:
    /// `kConsentAccepted` or `kConsentRefused`. Null, and logged, where none is registered.
    static std::unique_ptr<IABPrivacyCenter> ofIAB(std::string_view value);
};

} // namespace vx
