#include "tools/studio/application/ReportingDoors.h"

#include <algorithm>
#include <string>

#include "tools/studio/application/StudioReport.h"

namespace vx::tools::studio {

namespace {

template <class Dictionary>
Json object(const Dictionary& dictionary) {
    auto result = Json::object();
    for (const auto& [key, value] : dictionary)
        addMember(result, key, value);
    return result;
}

} // namespace

void ReportingLogger::log(std::string_view message, int level) {
    if (before_)
        before_();
    report({{"kind", "log"}, {"title", message}, {"level", level}, {"source", source_}});
}

void ReportingNotifications::post(const Notification& notification) {
    before_();
    report("notification", notification.name,
           notification.userInfo ? Json(object(*notification.userInfo)) : nullptr);
    NotificationCenter::post(notification);
}

void ReportingCallbacks::consentUpdated(const ConsentDictionary& consent) {
    report("callback", "consentUpdated:", object(consent));
}

void ReportingCallbacks::consentOutdated() {
    cause_ = "expired";
    report("callback", "consentOutdated");
}

void ReportingCallbacks::significantChangesInPrivacy() {
    cause_ = "changed";
    report("callback", "significantChangesInPrivacy");
}

void ReportingCallbacks::consentCategoryChanged() {
    report("callback", "consentCategoryChanged");
}

std::uint64_t MovableClock::nowMilliseconds() const {
    using namespace std::chrono;
    if (standsAt_)
        return *standsAt_;
    const auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch());
    return static_cast<std::uint64_t>(std::max<std::int64_t>((now + offset_).count(), 0));
}

} // namespace vx::tools::studio
