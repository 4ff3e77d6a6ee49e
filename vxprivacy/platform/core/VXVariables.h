#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// Facts that the core library and the tag SDK gathered: the user agent, the SDK identifier.
class VXCoreVariables {
public:
    static VXCoreVariables& sharedInstance();

    /// The value of the variable `name`, or nothing.
    std::optional<std::string> getData(std::string_view name) const;
};

/// Facts that the core library computes when asked, the time among them.
class VXPredefinedVariables {
public:
    static VXPredefinedVariables& sharedInstance();

    /// The value of the variable `name`, or nothing.
    std::optional<std::string> getData(std::string_view name) const;

    /// Seconds since 1970.
    std::uint64_t now() const;
    /// Milliseconds since 1970.
    std::uint64_t nowMs() const;
    /// The same as decimal text.
    std::string nowMsString() const;
};

} // namespace vx
