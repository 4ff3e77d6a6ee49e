#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/iab/IABLibrary.h"
#include "vxprivacy/services/iab/TCModel.h"

namespace vx::services::tcf {

/// Purposes that a restriction can name: what 6 bits hold.
inline constexpr std::uint32_t kGreatestPurpose = 63;

/// The purpose that `text` names, 1 to 63 in plain decimal; absent when it names none.
std::optional<std::uint32_t> purposeIn(std::string_view text);

/// By purpose the types of restriction of vendors 1, 2, 3 and so on, a character each.
using RestrictionTexts = std::map<std::uint32_t, std::string>;

/// The types in that form, with "_" where there is no restriction. A vendor has one of each
/// purpose.
RestrictionTexts textsOf(const Restrictions& restrictions);

/// A publisher's restrictions in the two forms in which they are stored.
struct PublisherRules {
    Restrictions encoded{};   ///< in the TC string
    RestrictionTexts texts{}; ///< under the IAB's keys
    bool whole = true;        ///< false: what no field can hold was left out
};

/// The texts as they are. Type 1 is not encoded, since it is also what fills the places of vendors
/// of whom nothing is said.
PublisherRules rulesOf(const PublisherRestrictions& restrictions);
/// All three types are encoded. In the texts a "_" says that there is no restriction, as in the
/// IAB's CMP API, "In App Details".
PublisherRules rulesOf(const ExplicitRestrictions& restrictions);

} // namespace vx::services::tcf
