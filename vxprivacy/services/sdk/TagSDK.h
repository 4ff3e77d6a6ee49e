#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"
#include "vxprivacy/platform/foundation/TextHash.h"
#include "vxprivacy/platform/sdk/Zentrix.h"

namespace vx::services {

/// A small tag SDK: keeps permanent data in memory, and sends hits while consent allows it.
///
/// It is off until the module's start notification, and off again after the stop notification.
/// Application's thread.
///
///     TagSDK sdk(center, [](const TagSDK::Hit& hit) { send(hit); });
///     sdk.accept("page=home");   // false: dropped, nobody consented yet
class VXPRIVACY_EXPORT TagSDK : public Zentrix, private NotificationObserver {
public:
    /// What goes with every hit, by key.
    using PermanentData = std::unordered_map<std::string, std::string, TextHash, std::equal_to<>>;

    /// What is sent. Both parts may be used until the sink returns.
    struct Hit {
        std::string_view data;              ///< what `accept` was given
        const PermanentData& permanentData; ///< all of it at that moment
    };
    /// Takes a hit to where it is sent.
    using Sink = std::function<void(const Hit&)>;

    /// Listens to `center`, which must outlive it, and hands each hit that may be sent to `sink`,
    /// which may not be empty, on the thread that called `accept`.
    TagSDK(NotificationCenter& center, Sink sink);
    ~TagSDK() override;
    TagSDK(const TagSDK&) = delete;
    TagSDK& operator=(const TagSDK&) = delete;

    // Permanent data is kept while the SDK is off, too, and gone with this object.
    void addPermanentData(std::string_view key, std::string_view value) override;
    void removePermanentData(std::string_view key) override;
    std::optional<std::string> getPermanentData(std::string_view key) const override;
    /// All of it, until the next change.
    const PermanentData& permanentData() const { return permanentData_; }

    /// Sends a hit with `data`. False: the SDK is off, and the hit is dropped and counted.
    bool accept(std::string_view data);

    /// Whether hits are sent.
    bool isOn() const { return on_; }
    /// The choices as the last start notification brought them, "&key=value" each; empty when it
    /// brought none, or there was none yet.
    const std::string& startData() const { return startData_; }
    /// How many hits were handed to the sink, and how many dropped.
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
