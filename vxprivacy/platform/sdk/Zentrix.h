#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// The door to the tag SDK. It receives consent as permanent data: pairs that it attaches to every
/// later hit, each a consent key with its value. The engine shares the object that start-up was
/// given. Application's thread; nothing throws.
///
/// It also obeys two notifications, which it observes itself: it sends nothing before it hears
/// `kVXNotification_StartingTheSDK`, nor after `kVXNotification_StoppingTheSDK` until the next
/// start. Permanent data comes in either state, and anew at every start-up: the SDK need not store
/// it.
class VXPRIVACY_EXPORT Zentrix {
public:
    virtual ~Zentrix();

    /// Keeps `value` under `key`, in place of what was there. Called for every entry of a save, of
    /// which there may be thousands.
    virtual void addPermanentData(std::string_view key, std::string_view value) = 0;
    /// Forgets what is kept under `key`; nothing need be.
    virtual void removePermanentData(std::string_view key) = 0;
    /// The value kept under `key`, or nothing. Asked for a user identifier that is the name of a
    /// permanent datum.
    virtual std::optional<std::string> getPermanentData(std::string_view key) const = 0;
};

} // namespace vx
