#pragma once

#include <string>

#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/services/iab/IdentifierSet.h"

namespace vx::services::tcf {

/// What a consent dictionary says of the items of the framework: the user's choice.
struct Choice {
    /// Keys of other things, and numbers that name no item, are passed over.
    static Choice of(const OrderedDictionary<std::string>& consent);

    /// Of all vendors, by their entry of legitimate interest, and without one by that of consent.
    bool hasObjectedTo(std::uint32_t vendor) const {
        return vendors.interestRefused.contains(vendor) ||
               (vendors.consentRefused.contains(vendor) &&
                !vendors.interestAccepted.contains(vendor));
    }

    /// The items of one kind, by what was entered for them.
    struct Items {
        IdentifierSet consentAccepted{};
        IdentifierSet consentRefused{};
        IdentifierSet interestAccepted{};
        IdentifierSet interestRefused{};
    };
    Items purposes{};
    Items vendors{};
    Items specialFeatures{}; ///< opt-ins stand where others have legitimate interest
};

} // namespace vx::services::tcf
