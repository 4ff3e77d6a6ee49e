#pragma once

#include <memory>
#include <vector>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/testing/DocumentTexts.h"
#include "vxprivacy/testing/MemoryStore.h"
#include "vxprivacy/testing/RecordingDoors.h"
#include "vxprivacy/testing/RecordingIABLibrary.h"

namespace vx::recording {

/// What a world holds before anything runs in it.
struct VXPRIVACY_EXPORT WorldSettings {
    /// Entries of the key-value store.
    Texts store = {};
    /// Document texts by configuration file name.
    Texts files = {};
    /// Whether the IAB library is present.
    bool iab = false;
    /// What that library is told; the profile `InForce` makes strings of today.
    services::TCFSettings tcf = {};
    /// When the CMP storage's consent record was created, as it says until it is written or reset.
    std::string createdDate = {};
    /// Whether there is a tag SDK instance to start the engine with.
    bool sdk = true;
    /// Permanent data that the tag SDK has already.
    Texts sdkData = {};
    Texts coreVariables = {};
    Texts predefinedVariables = {};
    /// Milliseconds since 1970.
    std::uint64_t now = 1700000000000;
};

/// A process with the module in it and a recording implementation behind every door: nothing is
/// read or written outside, no time passes, and all that happens is told.
///
///     World world({.files = {{"privacy", text}}});     // what the application ships
///     world.engine().setSiteID({.site = 12, .privacy = 5}, world.sdk());
///     world.engine().acceptAllConsent();
///     world.store().entries().at("PRIVACY_CAT_1");     // "1"
///     world.events();                                  // in the order in which it happened
///     world.relaunch();                                // and start the engine again
///
/// There may be one world at a time, as there may be one `Runtime`. Link `vxprivacy::testing`; the
/// namespace is `recording`, for `testing` is GoogleTest's.
class VXPRIVACY_EXPORT World {
public:
    /// Without a sink the events are collected in `events`.
    explicit World(WorldSettings settings = {}, EventSink sink = {});
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    /// The process ends, saving nothing, and starts again: store, tag SDK data, clock and document
    /// texts stay; the engine, its callback and its registrations are gone.
    void relaunch();

    /// Made at first use, as for every application.
    VXMobilePrivacy& engine() { return VXMobilePrivacy::sharedInstance(); }
    MemoryStore& store() { return store_; }
    DocumentTexts& documents() { return documents_; }
    StandingClock& clock() { return clock_; }
    /// The tag SDK instance for the engine's start-up; null when the world has none.
    std::shared_ptr<Zentrix> sdk() const { return hasSDK_ ? zentrix_ : nullptr; }
    const Texts& sdkData() const { return zentrix_->permanentData(); }
    const RecordingIABLibrary& iab() const { return iab_; }
    /// A callback object that answers only the operations of these names.
    std::shared_ptr<VXPrivacyCallbacks> callbacks(RecordingCallbacks::Operations answers) const;

    /// Takes events of doors of your own in among the others.
    const EventSink& sink() const { return sink_; }
    /// What happened since the world was made or the events were cleared, oldest first.
    const std::vector<Event>& events() const { return events_; }
    void clearEvents() { events_.clear(); }

private:
    struct Process;

    EventSink sink_;
    std::vector<Event> events_;
    MemoryStore store_;
    DocumentTexts documents_;
    RecordingLogger logger_;
    StandingClock clock_;
    GivenVariables coreVariables_;
    GivenVariables predefinedVariables_;
    RecordingIABLibrary iab_;
    RecordingApplication application_;
    bool hasIAB_;
    bool hasSDK_;
    std::shared_ptr<RecordingZentrix> zentrix_;
    std::unique_ptr<Process> process_; // last, so that it ends before its doors
};

} // namespace vx::recording
