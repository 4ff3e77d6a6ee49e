#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "vxprivacy/engine/VXPrivacyCallbacks.h"
#include "vxprivacy/platform/core/VXEvents.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/sdk/Zentrix.h"

namespace vx {

/// What is known of the user's decision. Its numbers are given out by `VXMobilePrivacy`.
enum class PrivacyState : std::int32_t { Undecided = 0, Accepted = 1, Refused = 2 };

/// What one engine knows and whom it is connected with.
///
/// `VXMobilePrivacy` owns it. The units of the engine work on it and keep nothing of it between two
/// steps: an application may replace the tag SDK, the callback and the sender in the middle of a
/// save, from its callback.
struct VXPRIVACY_EXPORT EngineState {
    /// The engine itself, as the object of its notifications.
    const void* engine = nullptr;

    // What each means is said at its accessor in VXMobilePrivacy.h.
    bool enableIAB = false;
    PrivacyState privacyState = PrivacyState::Undecided;
    std::int32_t clientSiteID = 0;
    std::int32_t privacyID = 0;
    bool consentExpired = false;
    bool generatePublisherTC = false;
    std::shared_ptr<Zentrix> vxInstance;          // null: none
    std::optional<std::string> userID;            // absent: none was given
    std::shared_ptr<VXPrivacyCallbacks> callback; // null: nobody listens
    std::int32_t vendorListVersion = 0;
    bool switchDefaultState = true;
    std::int32_t maxVendorID = 0;
    std::optional<std::string> languageCode; // absent: none was selected
    /// How often TC data was written or forgotten: by it a save knows whether its callback did.
    std::uint32_t tcDataChanges = 0;
    // Never null once the engine is initialised.
    std::unique_ptr<VXEventSender> senderDelegate;
    std::unique_ptr<VXEventListener> listenerDelegate;

    /// Posts the notification `name` of this engine; everybody has heard it when this returns.
    void send(std::string_view name, std::optional<Notification::UserInfo> userInfo = {}) const;

    /// The callback, if it answers `operation`; else null. Shared, so that it outlives the call in
    /// which it replaces itself.
    std::shared_ptr<VXPrivacyCallbacks> callbackAnswering(std::string_view operation) const;
    /// Tells the callback of consent that was saved, restored or forgotten.
    void callBack(const ConsentDictionary& consent) const;
};

} // namespace vx
