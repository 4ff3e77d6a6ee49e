#pragma once

#include <set>
#include <utility>

#include "vxprivacy/engine/VXPrivacyCallbacks.h"
#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"
#include "vxprivacy/platform/sdk/Zentrix.h"
#include "vxprivacy/platform/ui/Application.h"
#include "vxprivacy/testing/Event.h"

// The smaller doors of the module. Each tells its events to a sink.

namespace vx::recording {

/// {"log":[level,"text"]}
class VXPRIVACY_EXPORT RecordingLogger : public Logger {
public:
    /// Tells its events to `sink`, as all of these.
    explicit RecordingLogger(EventSink sink) : sink_(std::move(sink)) {}
    void log(std::string_view message, int level) override;

private:
    EventSink sink_;
};

/// Delivers as any notification center does. {"listen":"name"}, and, before the observers hear of
/// it, {"send":{"name":"...","userInfo":{...}|null}}.
class VXPRIVACY_EXPORT RecordingNotificationCenter : public NotificationCenter {
public:
    /// Tells its events to `sink`.
    explicit RecordingNotificationCenter(EventSink sink) : sink_(std::move(sink)) {}
    void addObserver(std::string_view name, NotificationObserver& observer) override;
    void post(const Notification& notification) override;

private:
    EventSink sink_;
};

/// A clock that stands still until it is told the time.
class VXPRIVACY_EXPORT StandingClock : public Clock {
public:
    /// Milliseconds since 1970, UTC.
    explicit StandingClock(std::uint64_t now) : now_(now) {}
    std::uint64_t nowMilliseconds() const override { return now_; }
    /// Milliseconds since 1970, UTC.
    void setNow(std::uint64_t milliseconds) { now_ = milliseconds; }

private:
    std::uint64_t now_;
};

/// Variables given beforehand.
class VXPRIVACY_EXPORT GivenVariables : public Variables {
public:
    /// `values` by the variables' names.
    explicit GivenVariables(Texts values) : values_(std::move(values)) {}
    std::optional<std::string> get(std::string_view name) const override;

private:
    Texts values_;
};

/// {"sdk":["addPermanentData","key","value"]}, {"sdk":["removePermanentData","key"]}
class VXPRIVACY_EXPORT RecordingZentrix : public Zentrix {
public:
    /// Begins with the permanent data `data`, and tells its events to `sink`.
    RecordingZentrix(Texts data, EventSink sink) : data_(std::move(data)), sink_(std::move(sink)) {}
    void addPermanentData(std::string_view key, std::string_view value) override;
    void removePermanentData(std::string_view key) override;
    std::optional<std::string> getPermanentData(std::string_view key) const override;
    /// All of it, by key.
    const Texts& permanentData() const { return data_; }

private:
    Texts data_;
    EventSink sink_;
};

/// {"open":"address"}
class VXPRIVACY_EXPORT RecordingApplication : public Application {
public:
    /// Tells its events to `sink`.
    explicit RecordingApplication(EventSink sink) : sink_(std::move(sink)) {}
    void openURL(std::string_view address) override;

private:
    EventSink sink_;
};

/// Answers only the operations it is made with. {"callback":["consentUpdated:",{...}]},
/// {"callback":["consentOutdated"]} and so on.
class VXPRIVACY_EXPORT RecordingCallbacks : public VXPrivacyCallbacks {
public:
    /// Names of operations, "consentUpdated:".
    using Operations = std::set<std::string, std::less<>>;

    /// Answers the operations `answers`, and tells its events to `sink`.
    RecordingCallbacks(Operations answers, EventSink sink)
        : answers_(std::move(answers)), sink_(std::move(sink)) {}
    void consentUpdated(const ConsentDictionary& consent) override;
    void consentOutdated() override;
    void significantChangesInPrivacy() override;
    void consentCategoryChanged() override;
    bool respondsTo(std::string_view operation) const override;

private:
    Operations answers_;
    EventSink sink_;
};

} // namespace vx::recording
