#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// The tag SDK instance that receives consent as permanent data: pairs that the SDK attaches to
/// every later hit. It also obeys the start and stop notifications.
class Zentrix {
public:
    virtual ~Zentrix();

    /// Keeps `value` under `key`, in place of what was there.
    virtual void addPermanentData(std::string_view key, std::string_view value) = 0;
    /// Forgets what is kept under `key`; nothing need be.
    virtual void removePermanentData(std::string_view key) = 0;
    /// The value kept under `key`, or nothing.
    virtual std::optional<std::string> getPermanentData(std::string_view key) const = 0;
};

} // namespace vx
