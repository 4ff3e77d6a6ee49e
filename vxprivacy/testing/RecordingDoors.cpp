#include "vxprivacy/testing/RecordingDoors.h"

namespace vx::recording {

namespace {

std::optional<std::string> textNamed(std::string_view name, const Texts& texts) {
    const auto found = texts.find(name);
    return found == texts.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

void RecordingLogger::log(std::string_view message, int level) {
    sink_({{"log", Event::array({level, message})}});
}

void RecordingNotificationCenter::addObserver(std::string_view name,
                                              NotificationObserver& observer) {
    sink_({{"listen", name}});
    NotificationCenter::addObserver(name, observer);
}

void RecordingNotificationCenter::post(const Notification& notification) {
    const Event userInfo = notification.userInfo ? asObject(*notification.userInfo) : Event();
    sink_({{"send", {{"name", notification.name}, {"userInfo", userInfo}}}});
    NotificationCenter::post(notification);
}

std::optional<std::string> GivenVariables::get(std::string_view name) const {
    return textNamed(name, values_);
}

void RecordingZentrix::addPermanentData(std::string_view key, std::string_view value) {
    sink_({{"sdk", Event::array({"addPermanentData", key, value})}});
    data_.insert_or_assign(std::string(key), std::string(value));
}

void RecordingZentrix::removePermanentData(std::string_view key) {
    sink_({{"sdk", Event::array({"removePermanentData", key})}});
    if (const auto found = data_.find(key); found != data_.end())
        data_.erase(found);
}

std::optional<std::string> RecordingZentrix::getPermanentData(std::string_view key) const {
    return textNamed(key, data_);
}

void RecordingApplication::openURL(std::string_view address) {
    sink_({{"open", address}});
}

void RecordingCallbacks::consentUpdated(const ConsentDictionary& consent) {
    sink_({{"callback", Event::array({"consentUpdated:", asObject(consent)})}});
}

void RecordingCallbacks::consentOutdated() {
    sink_({{"callback", Event::array({"consentOutdated"})}});
}

void RecordingCallbacks::significantChangesInPrivacy() {
    sink_({{"callback", Event::array({"significantChangesInPrivacy"})}});
}

void RecordingCallbacks::consentCategoryChanged() {
    sink_({{"callback", Event::array({"consentCategoryChanged"})}});
}

bool RecordingCallbacks::respondsTo(std::string_view operation) const {
    return answers_.contains(operation);
}

} // namespace vx::recording
