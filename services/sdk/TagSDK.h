#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "services/core/TextHash.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"
#include "vxprivacy/platform/sdk/Zentrix.h"

namespace vx::services {

/// A small tag SDK: keeps permanent data in memory, and sends hits while consent lets it.
///
/// Off until the start notification, off again after the stop notification. Application's thread.
///
///     TagSDK sdk(center, [](const TagSDK::Hit& hit) { send(hit); });
///     sdk.accept("page=home");   // false: dropped, nobody consented yet
class TagSDK : public Zentrix, private NotificationObserver {
public:
    using PermanentData = std::unordered_map<std::string, std::string, TextHash, std::equal_to<>>;

    /// What goes out. Both parts are views, good until the sink returns.
    struct Hit {
        std::string_view data;
        const PermanentData& permanentData;
    };
    using Sink = std::function<void(const Hit&)>;

    /// Hears the notifications of `center`, which must outlive it, and gives accepted hits to
    /// `sink`.
    TagSDK(NotificationCenter& center, Sink sink);
    ~TagSDK() override;
    TagSDK(const TagSDK&) = delete;
    TagSDK& operator=(const TagSDK&) = delete;

    void addPermanentData(std::string_view key, std::string_view value) override;
    void removePermanentData(std::string_view key) override;
    std::optional<std::string> getPermanentData(std::string_view key) const override;
    const PermanentData& permanentData() const { return permanentData_; }

    /// Sends a hit with `data`. False: the SDK is off, and the hit is dropped and counted.
    bool accept(std::string_view data);

    bool isOn() const { return on_; }
    /// What the last start notification brought ("&key=value" each); empty when it brought nothing.
    const std::string& startData() const { return startData_; }
    std::size_t sent() const { return sent_; }
    std::size_t dropped() const { return dropped_; }

private:
    void onNotificationReceived(const Notification& notification) override;

    NotificationCenter& center_;
    Sink sink_;
    PermanentData permanentData_;
    bool on_ = false;
    std::string startData_;
    std::size_t sent_ = 0;
    std::size_t dropped_ = 0;
};

} // namespace vx::services
