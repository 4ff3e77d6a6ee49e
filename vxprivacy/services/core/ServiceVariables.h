#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/core/KeyValueStore.h"

namespace vx::services {

/// Where the identifier of this installation is kept in the store: a random UUID, made when it is
/// first asked for. Found again in every user's store.
inline constexpr std::string_view kSDKIdentifierKey = "VXSDKIdentifier";

/// The user agent, the SDK identifier, and what the application adds.
class ServiceVariables : public Variables {
public:
    using More = std::function<std::optional<std::string>(std::string_view name)>;

    ServiceVariables(KeyValueStore& store, std::string userAgent, More more);

    std::optional<std::string> get(std::string_view name) const override;

private:
    std::string sdkIdentifier() const;

    KeyValueStore& store_;
    const std::string userAgent_;
    const More more_;
};

/// The system's clock, or the one that the application gave.
class ServiceClock : public Clock {
public:
    explicit ServiceClock(const Clock* given) : given_(given) {}

    std::uint64_t nowMilliseconds() const override;

private:
    const Clock* given_;
};

} // namespace vx::services
