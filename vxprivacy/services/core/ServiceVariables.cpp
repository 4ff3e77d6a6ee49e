#include "vxprivacy/services/core/ServiceVariables.h"

#include <chrono>
#include <random>
#include <utility>

#include "vxprivacy/platform/core/VXNotifications.h"

namespace vx::services {

namespace {

// Version 4 of RFC 9562: 122 random bits, and six that say what it is.
std::string randomUUID() {
    static constexpr std::string_view digits = "0123456789abcdef";
    std::random_device random;
    std::string uuid = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
    for (char& c : uuid) {
        if (c == 'x')
            c = digits[random() % 16];
        else if (c == 'y')
            c = digits[8 + random() % 4];
    }
    return uuid;
}

} // namespace

ServiceVariables::ServiceVariables(KeyValueStore& store, std::string userAgent, More more)
    : store_(store), userAgent_(std::move(userAgent)), more_(std::move(more)) {}

std::optional<std::string> ServiceVariables::get(std::string_view name) const {
    if (name == kVXPredefinedVariable_UserAgent)
        return userAgent_;
    if (name == kVXPredefinedVariable_SDKID)
        return sdkIdentifier();
    return more_ ? more_(name) : std::nullopt;
}

std::string ServiceVariables::sdkIdentifier() const {
    if (std::optional<std::string> kept = store_.get(kSDKIdentifierKey))
        return *kept;
    store_.setIfAbsent(kSDKIdentifierKey, randomUUID());
    return *store_.get(kSDKIdentifierKey);
}

std::uint64_t ServiceClock::nowMilliseconds() const {
    using namespace std::chrono;
    if (given_)
        return given_->nowMilliseconds();
    const auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch());
    return static_cast<std::uint64_t>(now.count());
}

} // namespace vx::services
