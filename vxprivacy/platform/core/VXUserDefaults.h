#pragma once

#include "vxprivacy/platform/core/KeyValueStore.h"

#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// The core library's key-value store. Application's thread.
class VXUserDefaults {
public:
    /// The entry under `key`, or nothing.
    static std::optional<std::string> retrieveInfoFromUserDefaults(std::string_view key);
    /// Stores `value` under the key `label`, in place of what was there.
    static void saveInfoToUserDefaults(std::string_view value, std::string_view label);
    /// A span of saves that is all or nothing.
    static StoreTransaction transaction();
};

} // namespace vx
