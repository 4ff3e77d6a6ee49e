#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/services/iab/VendorList.h"

namespace vx::tools::tc {

/// A rule of the framework in force that a TC string breaks.
struct Finding {
    std::string rule;  ///< a name for programs, "policy-version"
    std::string field; ///< segment and field, "Core.TcfPolicyVersion"
    /// First and last bit of the field in its segment, from 0; absent where there is no such field.
    std::optional<std::pair<std::size_t, std::size_t>> bits;
    std::string what;   ///< what is wrong, in English
    std::string source; ///< document and section that have the rule
};

/// The IAB's list of CMPs: of each whether it is active.
using CMPList = std::map<std::uint32_t, bool>;
/// From the list's document; empty where it is none.
CMPList cmpListOf(const JSONValue& document);

/// What a string is held against; without a list its rules are left out.
struct CheckLists {
    std::optional<services::tcf::VendorList> vendors{};
    std::optional<CMPList> cmps{};
};

/// What a validator of today finds in a TC string, in the order of its fields; nothing where it is
/// valid. A string that cannot be read has that one finding.
std::vector<Finding> check(std::string_view text, const CheckLists& lists);

} // namespace vx::tools::tc
