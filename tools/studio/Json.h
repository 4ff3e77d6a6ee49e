#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace vx::tools::studio {

/// JSON whose members keep their order, as everything that is shown does.
using Json = nlohmann::ordered_json;

/// The document that `text` holds. Discarded (`is_discarded`) when it is no JSON or nested deeper
/// than 200 levels, which writing it again would not survive; then `*problem`, if given, says why
/// in one line.
Json parsed(std::string_view text, std::string* problem = nullptr);

} // namespace vx::tools::studio
