#pragma once

#include <string>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "tools/studio/shared/Result.h"

namespace vx::tools::studio {

/// JSON whose members keep their order, as everything that is shown does.
using Json = nlohmann::ordered_json;

/// Adds a member that `object` does not have. Quick, where `object[key]` searches all members.
inline void addMember(Json& object, std::string key, Json value) {
    object.get_ref<Json::object_t&>().emplace_back(std::move(key), std::move(value));
}

/// `json` in one line. Bytes that are no UTF-8 become U+FFFD.
std::string dumped(const Json& json);

/// The document that `text` holds; a problem when it is no JSON, or nested deeper than 200 levels,
/// which writing it again would not survive.
Result<Json> parsed(std::string_view text);

} // namespace vx::tools::studio
