#pragma once

#include <chrono>
#include <string>
#include <utility>

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
    /// `cause` is what an earlier process heard last.
    explicit ReportingCallbacks(std::string cause) : cause_(std::move(cause)) {}

    /// Why the user must be asked, as far as the engine told: "expired" or "changed".
    const std::string& cause() const { return cause_; }

    void consentUpdated(const ConsentDictionary& consent) override;
    void consentOutdated() override;
    void significantChangesInPrivacy() override;
    void consentCategoryChanged() override;

private:
    std::string cause_;
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
