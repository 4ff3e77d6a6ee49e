#pragma once

#include <string>
#include <string_view>
#include <variant>

#include <nlohmann/json.hpp>

#include "vxprivacy/services/iab/TCModel.h"

namespace vx::tools::tc {

/// The model as an object of its segments "Core", "DisclosedVendors", "AllowedVendors" and
/// "PublisherTC", the fields named as the IAB names them. Times are texts, sets arrays of numbers.
nlohmann::ordered_json asJSON(const services::tcf::TCModel& model);

/// A TC string, "text", with "model", the same of what it holds, or "problem", why it cannot be
/// decoded, in one line.
nlohmann::ordered_json decodedAsJSON(std::string_view text);

/// Why a JSON value is no model.
struct JSONFault {
    std::string path; ///< JSON pointer
    std::string why;  ///< in English
};

/// The model of such an object. A field that is missing is 0, false, empty, "AA", and MaxVendorId
/// the greatest of its vendors; an unknown one is a fault.
std::variant<services::tcf::TCModel, JSONFault> modelIn(const nlohmann::ordered_json& json);

} // namespace vx::tools::tc
