#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

// Both classes hand their calls to doors of the `Runtime` in force. They may be reached before
// there is one, but not asked. Application's thread.

/// Facts that the core library and the tag SDK gathered: the user agent, the SDK identifier. The
/// door is `Platform::coreVariables`.
class VXPRIVACY_EXPORT VXCoreVariables {
public:
    /// The one instance.
    static VXCoreVariables& sharedInstance();

    /// The value of the variable `name`, or nothing.
    std::optional<std::string> getData(std::string_view name) const;
};

/// Facts that the core library computes when asked. The doors are `Platform::predefinedVariables`,
/// and for the time `Platform::clock`.
class VXPRIVACY_EXPORT VXPredefinedVariables {
public:
    /// The one instance.
    static VXPredefinedVariables& sharedInstance();

    /// The value of the variable `name`, or nothing.
    std::optional<std::string> getData(std::string_view name) const;

    /// Whole seconds since 1970, UTC: the milliseconds without their fraction.
    std::uint64_t now() const;
    /// Milliseconds since 1970, UTC.
    std::uint64_t nowMs() const;
    /// The same as decimal text.
    std::string nowMsString() const;
};

} // namespace vx
