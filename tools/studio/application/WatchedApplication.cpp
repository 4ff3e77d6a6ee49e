// Puts the engine on its services and the studio's doors, and does what the studio commands.

#include "tools/studio/application/WatchedApplication.h"

#include <string_view>
#include <utility>

#include "tools/studio/application/State.h"
#include "tools/studio/application/StudioReport.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"

namespace vx::tools::studio {

namespace {

using std::chrono::milliseconds;

constexpr const char* kUserAgent = "HarbourWeekly/1.0 (VXPrivacy studio)";
// As the engine asks for them.
constexpr const char* kCallbacks[] = {"consentUpdated:", "consentOutdated:",
                                      "significantChangesInPrivacy:", "consentCategoryChanged:"};

void reportHit(std::string_view name, bool sent, const Json& data) {
    report("hit", std::string(name) + (sent ? " sent" : " dropped"),
           {{"name", name}, {"sent", sent}, {"data", data}});
}

// The members that are new or other than before.
Json changed(const Json& before, const Json& now) {
    Json changes = Json::object();
    for (const auto& [name, value] : now.items())
        if (!before.contains(name) || before[name] != value)
            changes[name] = value;
    return changes;
}

services::TCFSettings tcfSettings(const Launch& launch) {
    if (!launch.inForce)
        return {};
    return {.profile = services::TCFProfile::InForce, .publisherCountry = kPublisherCountry};
}

void reportSent(const services::TagSDK::Hit& hit) {
    reportHit(hit.data, true, sortedData(hit.permanentData));
}

} // namespace

WatchedApplication::WatchedApplication(const Launch& launch, const system::WakeUp& wakeUp)
    : store_(launch.store), services_(begin(launch)), runtime_(doors(launch)),
      sdk_(std::make_shared<services::TagSDK>(notifications_, reportSent)),
      callbacks_(std::make_shared<ReportingCallbacks>(launch.cause)),
      tcString_(launch.tcStringBefore) {
    services_.setWakeUp([&wakeUp] { wakeUp.signal(); });
    VXMobilePrivacy& engine = VXMobilePrivacy::sharedInstance();
    steps_.step({{"do", "registerCallback"}, {"answers", kCallbacks}});
    engine.registerCallback(callbacks_);
    steps_.step({{"do", "setSiteID"}, {"siteID", launch.site}, {"privacyID", launch.privacy}});
    engine.setSiteID(launch.site, launch.privacy, sdk_);
    if (launch.mode == Mode::IAB)
        setUpIAB(launch);
}

Reply WatchedApplication::perform(const Command& command) {
    turn_.readAgain();
    VXMobilePrivacy& engine = VXMobilePrivacy::sharedInstance();
    if (command.name == command::kAccept) {
        steps_.step({{"do", "acceptAllConsent"}});
        engine.acceptAllConsent();
    } else if (command.name == command::kRefuse) {
        steps_.step({{"do", "refuseAllConsent"}});
        engine.refuseAllConsent();
    } else if (command.name == command::kHit)
        sendHit(command.argument.get<std::string>());
    else if (command.name == command::kMoveClock)
        moveClock(milliseconds(command.argument.get<std::int64_t>()));
    else if (command.name == command::kPublisherTC)
        setPublisherTC(command.argument.get<bool>());
    else if (command.name == command::kLanguage)
        return setLanguage(command.argument.get<std::string>());
    else
        return performOnDisplay(command);
    return std::string();
}

void WatchedApplication::poll() {
    turn_.readAgain();
    steps_.lookForDocuments(); // what was registered meanwhile
    services_.poll();
    steps_.lookForDocuments();
}

void WatchedApplication::reportState() {
    Json state = applicationState(*sdk_, *callbacks_, store_);
    state["vendorList"] = iab_ ? vendorList_.state() : Json();
    state["tcString"] = iab_ ? tcString_.state(state["store"]) : Json();
    state["center"] = display_.state();
    Json changes = changed(reported_, state);
    if (changes.empty())
        return;
    report({{"kind", kind::kState}, {"body", std::move(changes)}});
    reported_ = std::move(state);
}

// The settings of services that are about to open the store.
services::Settings WatchedApplication::begin(const Launch& launch) {
    clock_.setOffset(launch.clockOffset);
    turn_.readAgain();
    steps_.launch(launch, kUserAgent);
    services::Settings settings;
    settings.store = store_;
    settings.packaged = launch.packaged;
    settings.hosts.vendorList = launch.vendorListHost;
    if (!launch.host.empty())
        settings.hosts = {.configurationCDN = launch.host,
                          .vendorList = launch.host,
                          .consentCollector = launch.host};
    if (launch.inForce)
        settings.vendorListFormat = 3;
    settings.userAgent = kUserAgent;
    settings.logger = &servicesLogger_;
    settings.clock = &clock_;
    settings.notifications = &notifications_;
    return settings;
}

Platform WatchedApplication::doors(const Launch& launch) {
    const Platform platform = services_.platform();
    if (launch.mode == Mode::IAB)
        iab_.emplace(platform.store, servicesLogger_, tcfSettings(launch));
    return {.store = platform.store,
            .documents = platform.documents,
            .notifications = platform.notifications,
            .logger = logger_,
            .clock = turn_,
            .coreVariables = platform.coreVariables,
            .predefinedVariables = platform.predefinedVariables,
            .hosts = platform.hosts,
            .iab = iab_ ? &*iab_ : nullptr,
            .application = &display_};
}

void WatchedApplication::setUpIAB(const Launch& launch) {
    if (launch.publisherTC)
        setPublisherTC(true);
    if (!launch.language.empty())
        useLanguage(launch.language);
    if (launch.packaged.empty())
        return;
    steps_.step({{"do", "useCustomPublisherRestrictions"}});
    VXMobilePrivacy::sharedInstance().useCustomPublisherRestrictions();
}

Reply WatchedApplication::performOnDisplay(const Command& command) {
    const bool opens = command.name == command::kPresent;
    if (display_.shows() == opens)
        return Problem{opens ? "the privacy center is open already"
                             : "the privacy center is not open"};
    if (opens)
        display_.present(iab_ ? Mode::IAB : Mode::Category, presentationIn(command.argument));
    else if (command.name == command::kDismiss)
        display_.dismiss();
    else if (command.name == command::kPage)
        return display_.page();
    else if (command.name == command::kLayout)
        return display_.layoutCSS();
    else if (command.name == command::kEvent)
        return display_.dispatch(command.argument.get<std::string>());
    return std::string();
}

Reply WatchedApplication::setLanguage(const std::string& code) {
    if (!VXMobilePrivacy::supportsLanguage(code))
        return Problem{"the engine knows no language \"" + code + '"'};
    useLanguage(code);
    return std::string();
}

void WatchedApplication::useLanguage(const std::string& code) {
    steps_.step({{"do", "setLanguage"}, {"code", code}});
    VXMobilePrivacy::sharedInstance().setLanguage(code);
}

void WatchedApplication::setPublisherTC(bool on) {
    steps_.step({{"do", "set"}, {"generatePublisherTC", on}});
    VXMobilePrivacy::sharedInstance().setGeneratePublisherTC(on);
}

void WatchedApplication::sendHit(const std::string& name) {
    if (!sdk_->accept(name))
        reportHit(name, false, Json::object());
}

// As an application that comes to the foreground after a long time does.
void WatchedApplication::moveClock(milliseconds offset) {
    clock_.setOffset(offset);
    turn_.readAgain();
    steps_.step({{"do", "checkConsentValidity"}});
    VXMobilePrivacy::sharedInstance().checkConsentValidity();
}

} // namespace vx::tools::studio
