#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "vxprivacy/engine/VXPrivacyCallbacks.h"
#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"

// The doors through which the studio watches: each does what an application's own would and
// reports it.

namespace vx::tools::studio {

/// Says with each line whose it is.
class ReportingLogger : public Logger {
public:
    /// `source` is "engine" or "services"; `before` is called before each line.
    explicit ReportingLogger(std::string source, std::function<void()> before = nullptr)
        : source_(std::move(source)), before_(std::move(before)) {}
    void log(std::string_view message, int level) override;

private:
    const std::string source_;
    const std::function<void()> before_;
};

class ReportingNotifications : public NotificationCenter {
public:
    /// `before` is called before each notification.
    explicit ReportingNotifications(std::function<void()> before) : before_(std::move(before)) {}
    void post(const Notification& notification) override;

private:
    const std::function<void()> before_;
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

/// The system's clock, put forward or back, or one that stands.
class MovableClock : public Clock {
public:
    std::uint64_t nowMilliseconds() const override;
    void setOffset(std::chrono::milliseconds offset) {
        offset_ = offset;
        standsAt_.reset();
    }
    void standAt(std::uint64_t milliseconds) { standsAt_ = milliseconds; }

private:
    std::chrono::milliseconds offset_{0};
    std::optional<std::uint64_t> standsAt_;
};

/// Another clock, read once for all that is done in one go: what the engine does at one moment can
/// be played again at one moment.
class TurnClock : public Clock {
public:
    /// `clock` must outlive it.
    explicit TurnClock(const Clock& clock) : clock_(clock), now_(clock.nowMilliseconds()) {}
    std::uint64_t nowMilliseconds() const override { return now_; }
    void readAgain() { now_ = clock_.nowMilliseconds(); }

private:
    const Clock& clock_;
    std::uint64_t now_;
};

} // namespace vx::tools::studio
