#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// The core library's key-value store: hands its calls to the door `KeyValueStore`, which says what
/// keys and values may be and when they are durable. Application's thread.
class VXPRIVACY_EXPORT VXUserDefaults {
public:
    /// The entry under `key`, or nothing when there is none. Never waits for the disk.
    static std::optional<std::string> retrieveInfoFromUserDefaults(std::string_view key);
    /// Stores `value` under the key `label`, in place of what was there. Mind the order: value
    /// first.
    static void saveInfoToUserDefaults(std::string_view value, std::string_view label);
    /// The same where nothing is stored under `label`.
    static void saveIfAbsent(std::string_view value, std::string_view label);
    /// Says which value under `label` the other saves of this transaction go with, as
    /// `KeyValueStore::standBy` has it.
    static void standBy(std::string_view value, std::string_view label);
    /// A span of saves that is all or nothing. It must not outlive the `Runtime`.
    static StoreTransaction transaction();
};

} // namespace vx
