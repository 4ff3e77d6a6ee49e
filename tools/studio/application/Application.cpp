#include "tools/studio/application/Application.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <unistd.h>

#include "services/core/Services.h"
#include "services/iab/TCFLibrary.h"
#include "services/sdk/TagSDK.h"
#include "tools/studio/Json.h"
#include "tools/studio/LineReader.h"
#include "tools/studio/application/CenterDisplay.h"
#include "tools/studio/application/Report.h"
#include "tools/studio/application/ReportingDoors.h"
#include "tools/studio/application/State.h"
#include "tools/studio/application/WakeUp.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/platform/core/Runtime.h"

namespace vx::tools::studio {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kTick{500}; // for what depends on the time alone

void reportHit(std::string_view name, bool sent, const Json& data) {
    report("hit", std::string(name) + (sent ? " sent" : " dropped"),
           {{"name", name}, {"sent", sent}, {"data", data}});
}

void reportSent(const services::TagSDK::Hit& hit) {
    reportHit(hit.data, true, sortedData(hit.permanentData));
}

/// The application as its developer would write it, with the studio's doors where it has any.
class Application {
public:
    Application(const Json& world, const WakeUp& wakeUp)
        : store_(world.value("store", "")), services_(settings(world)), runtime_(doors(world)),
          sdk_(std::make_shared<services::TagSDK>(notifications_, reportSent)),
          callbacks_(std::make_shared<ReportingCallbacks>(world.value("cause", ""))) {
        services_.setWakeUp([&wakeUp] { wakeUp.signal(); });
        VXMobilePrivacy& engine = VXMobilePrivacy::sharedInstance();
        engine.registerCallback(callbacks_);
        engine.setSiteID(world.value("site", 0), world.value("privacy", 0), sdk_);
    }

    /// The reply: "text" where something was asked for, "problem" where it cannot be done.
    Json perform(const Json& command) {
        VXMobilePrivacy& engine = VXMobilePrivacy::sharedInstance();
        const std::string what = command.value("do", "");
        if (what == "accept")
            engine.acceptAllConsent();
        else if (what == "refuse")
            engine.refuseAllConsent();
        else if (what == "hit")
            sendHit(command.value("name", ""));
        else if (what == "clock")
            moveClock(milliseconds(command.value("offset", std::int64_t{0})));
        else
            return performOnDisplay(what, command);
        return Json::object();
    }

    void poll() { services_.poll(); }

    void reportState() {
        Json state = applicationState(*sdk_, *callbacks_, store_);
        state["center"] = display_.state();
        if (state == lastState_)
            return;
        report({{"kind", "state"}, {"body", state}});
        lastState_ = std::move(state);
    }

private:
    services::Settings settings(const Json& world) {
        clock_.setOffset(milliseconds(world.value("clockOffset", std::int64_t{0})));
        services::Settings settings;
        settings.store = store_;
        if (const std::string host = world.value("host", ""); !host.empty())
            settings.hosts = {
                .configurationCDN = host, .vendorList = host, .consentCollector = host};
        settings.userAgent = "HarbourWeekly/1.0 (VXPrivacy studio)";
        settings.logger = &logger_;
        settings.clock = &clock_;
        settings.notifications = &notifications_;
        return settings;
    }

    Platform doors(const Json& world) {
        Platform platform = services_.platform();
        platform.application = &display_;
        if (world.value("iab", false)) {
            platform.iab = &iab_.emplace(platform.store, platform.logger);
            VXIABPrivacyCenterViewController::registerWithEngine();
        }
        return platform;
    }

    Json performOnDisplay(const std::string& what, const Json& command) {
        if (iab_)
            return {{"problem", "in IAB mode there is no privacy center on the screen yet"}};
        if (display_.shows() == (what == "present"))
            return {{"problem", display_.shows() ? "the privacy center is open already"
                                                 : "the privacy center is not open"}};
        if (what == "present")
            display_.present(command.value("width", 0.0));
        else if (what == "dismiss")
            display_.dismiss();
        else if (what == "page")
            return {{"text", display_.page()}};
        else if (what == "layout")
            return {{"text", display_.layoutCSS()}};
        else if (what == "event")
            return {{"text", display_.dispatch(command.value("text", ""))}};
        return Json::object();
    }

    void sendHit(const std::string& name) {
        if (!sdk_->accept(name))
            reportHit(name, false, Json::object());
    }

    // As an application that comes to the foreground after a long time does.
    void moveClock(milliseconds offset) {
        clock_.setOffset(offset);
        VXMobilePrivacy::sharedInstance().checkConsentValidity();
    }

    const std::filesystem::path store_;
    ReportingLogger logger_;
    ReportingNotifications notifications_;
    MovableClock clock_;
    CenterDisplay display_;
    services::Services services_;
    std::optional<services::TCFLibrary> iab_;
    Runtime runtime_;
    std::shared_ptr<services::TagSDK> sdk_;
    std::shared_ptr<ReportingCallbacks> callbacks_;
    Json lastState_;
};

} // namespace

void runApplication() {
    const WakeUp wakeUp;
    LineReader input(STDIN_FILENO);
    std::unique_ptr<Application> application;
    while (!input.ended()) {
        if (wakeUp.waitFor(STDIN_FILENO, kTick))
            input.read();
        if (application)
            application->poll();
        while (const auto line = input.next()) {
            const Json command = parsed(*line);
            if (!command.is_object())
                continue;
            Json reply = Json::object();
            if (!application)
                application = std::make_unique<Application>(command, wakeUp);
            else
                reply = application->perform(command);
            application->reportState();
            report({{"kind", "done"}, {"id", command.value("id", 0)}, {"reply", std::move(reply)}});
        }
        if (application)
            application->reportState();
    }
}

} // namespace vx::tools::studio
