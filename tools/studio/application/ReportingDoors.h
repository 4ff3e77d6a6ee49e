#pragma once

#include <chrono>

#include "vxprivacy/engine/VXPrivacyCallbacks.h"
#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"

// The doors through which the studio watches: each does what an application's own would and
// reports it.

namespace vx::tools::studio {

class ReportingLogger : public Logger {
public:
    void log(std::string_view message, int level) override;
};

class ReportingNotifications : public NotificationCenter {
public:
    void post(const Notification& notification) override;
};

class ReportingCallbacks : public VXPrivacyCallbacks {
public:
    void consentUpdated(const ConsentDictionary& consent) override;
    void consentOutdated() override;
    void significantChangesInPrivacy() override;
    void consentCategoryChanged() override;
};

/// The system's clock, put forward or back.
class MovableClock : public Clock {
public:
    std::uint64_t nowMilliseconds() const override;
    void setOffset(std::chrono::milliseconds offset) { offset_ = offset; }

private:
    std::chrono::milliseconds offset_{0};
};

} // namespace vx::tools::studio
