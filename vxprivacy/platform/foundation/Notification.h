#pragma once

#include <optional>
#include <string>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// A named message from one part of the stack to whoever listens to the name. Plain data: it is
/// good for as long as one keeps it. The names in use are in platform/core/VXNotifications.h.
struct VXPRIVACY_EXPORT Notification {
    /// Text by key.
    using UserInfo = OrderedDictionary<std::string>;

    /// Compared letter for letter.
    std::string name;
    /// Who sent it. For telling senders apart, never to be dereferenced: the sender may be gone.
    /// May be null.
    const void* object = nullptr;
    /// What goes with it; absent when there is nothing to say.
    std::optional<UserInfo> userInfo;
};

} // namespace vx
