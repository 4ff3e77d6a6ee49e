#pragma once

#include <memory>
#include <string>

#include "tools/studio/application/CenterDisplay.h"
#include "tools/studio/application/ReportingDoors.h"
#include "tools/studio/application/SessionSteps.h"
#include "tools/studio/shared/Mode.h"
#include "tools/studio/shared/Protocol.h"
#include "vxprivacy/services/sdk/TagSDK.h"
#include "vxprivacy/testing/DocumentTexts.h"

namespace vx::tools::studio {

/// What the steps of a session work on: an application that is to be as the session's was.
struct PlayedApplication {
    Mode mode;
    MovableClock& clock;
    TurnClock& turn;
    SessionSteps& steps;
    CenterDisplay& display;
    recording::DocumentTexts& documents;
    std::shared_ptr<services::TagSDK> sdk;
    std::shared_ptr<ReportingCallbacks> callbacks;
};

/// Does what a step of `vxprivacy play` says, and reports it as a step, as if the studio's user had
/// done it. A problem when the application cannot.
Reply playStep(const PlayedApplication& application, const std::string& line);

/// Whether a step is one of those that come before an engine is started.
bool isOfBeginning(const std::string& line);

/// The callbacks that the studio's application answers, as the engine asks for them.
inline constexpr const char* kCallbacks[] = {
    "consentUpdated:", "consentOutdated:", "significantChangesInPrivacy:",
    "consentCategoryChanged:"};

} // namespace vx::tools::studio
