#pragma once

#include <functional>
#include <map>
#include <string>

#include <nlohmann/json.hpp>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx::recording {

/// One thing that the module did to its surroundings: an object whose only member says what, such
/// as {"log":[2,"..."]} or {"sdk":["addPermanentData","PRIVACY_CAT_1","1"]}.
using Event = nlohmann::ordered_json;

/// Hears every event at the moment it happens.
using EventSink = std::function<void(const Event&)>;

/// Texts by name, sorted.
using Texts = std::map<std::string, std::string, std::less<>>;

/// The dictionary as a JSON object, in its own order.
VXPRIVACY_EXPORT Event asObject(const OrderedDictionary<std::string>& dictionary);

} // namespace vx::recording
