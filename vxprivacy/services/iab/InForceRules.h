#pragma once

#include "vxprivacy/services/iab/Choice.h"
#include "vxprivacy/services/iab/TCModel.h"
#include "vxprivacy/services/iab/VendorList.h"

// The rules of the framework as it is in force (version 2.3), each beside its source: "formats" is
// the IAB's "Consent string and vendor list formats", "guidelines" its "Implementation guidelines".

namespace vx::services::tcf {

/// Strings below it that were created after 30 September 2023 are invalid (formats, "Managing
/// conflicting string versions").
inline constexpr std::uint32_t kLeastPolicyVersion = 4;
/// Of vendor lists: the one that has all that the rules ask for (formats, "Example Global Vendor
/// List JSON Object").
inline constexpr std::uint32_t kListFormat = 3;
/// The IAB's library takes no smaller one, and 12 bits no greater.
inline constexpr std::uint32_t kLeastCMP = 2;
inline constexpr std::uint32_t kGreatestCMP = 4095;

/// Whether a string of today can be made by `list`.
bool isInForce(const VendorList& list);

/// What a vendor may do where the publisher restricts it, of what it declares.
struct Permitted {
    Purposes consent = 0;
    Purposes legitimateInterest = 0;
};
Permitted permitted(const ListedVendor& vendor, const Restrictions& restrictions);

/// The restrictions that a string by `list` has. Those of unknown or deleted vendors and purposes
/// are left out; a legitimate interest that nobody may claim becomes a prohibition.
Restrictions inForce(const Restrictions& restrictions, const VendorList& list);

/// Fills in who may do what: purposes, special features, and vendors in all three sections.
/// `disclosed` are the vendors that the user was shown. The model has its restrictions already.
void fillIn(const Choice& choice, const IdentifierSet& disclosed, const VendorList& list,
            TCModel& model);

} // namespace vx::services::tcf
