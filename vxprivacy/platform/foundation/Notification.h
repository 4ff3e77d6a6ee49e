#pragma once

#include "vxprivacy/platform/foundation/OrderedDictionary.h"

#include <optional>
#include <string>

namespace vx {

/// A named message from one part of the stack to whoever listens to the name.
struct Notification {
    using UserInfo = OrderedDictionary<std::string>;

    /// Compared letter for letter.
    std::string name;
    /// Who sent it; for telling senders apart, never to be dereferenced. May be null.
    const void* object = nullptr;
    /// What goes with it; absent when there is nothing to say.
    std::optional<UserInfo> userInfo;
};

} // namespace vx
