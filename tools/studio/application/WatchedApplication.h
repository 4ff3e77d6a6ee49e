#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "tools/studio/application/CenterDisplay.h"
#include "tools/studio/application/PlayedTCFLibrary.h"
#include "tools/studio/application/ReportingDoors.h"
#include "tools/studio/application/SessionSteps.h"
#include "tools/studio/application/TCStringView.h"
#include "tools/studio/application/VendorListView.h"
#include "tools/studio/shared/Protocol.h"
#include "tools/system/WakeUp.h"
#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/services/sdk/TagSDK.h"
#include "vxprivacy/testing/DocumentTexts.h"

namespace vx::tools::studio {

/// An application as its developer would write it: the engine, its services and a tag SDK, with the
/// studio's doors where the studio has any. One for a process.
class WatchedApplication {
public:
    /// Starts the engine. The services signal `wakeUp`, which must outlive this, when `poll` has
    /// work to do.
    WatchedApplication(const Launch& launch, const system::WakeUp& wakeUp);

    /// Whether it is as it was launched: the store of a session that is played may not come about.
    Reply world() const;

    Reply perform(const Command& command);
    /// Does what the services have waiting for this thread.
    void poll();
    /// Reports how things stand, as far as that is not as it was, once the engine was started.
    void reportState();

private:
    services::Settings begin(const Launch& launch);
    Platform doors(const Launch& launch);
    void start(const Launch& launch);
    void setUpIAB(const Launch& launch);
    Reply performOnDisplay(const Command& command);
    Reply setLanguage(const std::string& code);
    void useLanguage(const std::string& code);
    void setPublisherTC(bool on);
    void sendHit(const std::string& name);
    void moveClock(std::chrono::milliseconds offset);
    Reply play(const std::string& step);

    const std::filesystem::path store_;
    MovableClock clock_;
    TurnClock turn_{clock_}; // the engine's
    SessionSteps steps_{turn_};
    ReportingLogger logger_{"engine", [this] { steps_.lookForDocuments(); }};
    ReportingLogger servicesLogger_{"services"};
    ReportingNotifications notifications_{[this] { steps_.lookForDocuments(); }};
    CenterDisplay display_{steps_};
    std::string madeStoreProblem_; // of a session that is played
    services::Services services_;
    std::optional<recording::DocumentTexts> documents_; // of a session that is played
    std::optional<PlayedTCFLibrary> iab_;               // in IAB mode
    Runtime runtime_;
    std::shared_ptr<services::TagSDK> sdk_;
    std::shared_ptr<ReportingCallbacks> callbacks_;
    VendorListView vendorList_;
    TCStringView tcString_;
    bool isStarted_ = false; // before, there is nothing to report
    Json reported_ = Json::object();
};

} // namespace vx::tools::studio
