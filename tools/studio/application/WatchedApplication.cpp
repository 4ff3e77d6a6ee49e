// Puts the engine on its services and the studio's doors, and does what the studio commands.

#include "tools/studio/application/WatchedApplication.h"

#include <string_view>
#include <utility>

#include "tools/studio/application/State.h"
#include "tools/studio/application/StepPlayer.h"
#include "tools/studio/application/StudioReport.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"

namespace vx::tools::studio {

namespace {

using std::chrono::milliseconds;

constexpr const char* kUserAgent = "HarbourWeekly/1.0 (VXPrivacy studio)";

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

// The store of a session that is played, where that begins; what is in the way of writing it.
std::string makeStore(const std::filesystem::path& file, const Json& played, Logger& logger) {
    if (!played.contains("store"))
        return {};
    services::Settings settings{.store = file};
    settings.logger = &logger;
    services::Services services(settings);
    StoreTransaction whole(services.platform().store);
    for (const auto& [key, value] : played["store"].items())
        services.platform().store.set(key, value.get<std::string>());
    whole.commit();
    return services.status().storeProblem;
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
    if (!launch.played.value("bare", false))
        start(launch);
}

Reply WatchedApplication::world() const {
    std::string problem = madeStoreProblem_;
    if (problem.empty() && documents_)
        problem = services_.status().storeProblem;
    if (problem.empty())
        return std::string();
    return Problem{"its store cannot be written: " + problem};
}

void WatchedApplication::start(const Launch& launch) {
    isStarted_ = true;
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
    else if (command.name == command::kStep)
        return play(command.argument.get<std::string>());
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
    if (!isStarted_)
        return;
    Json state = applicationState(*sdk_, *callbacks_, store_);
    for (const char* name : {"store", "waitingBeacons"}) // what was read last, if it cannot be now
        if (state[name].is_null())
            state[name] = reported_.value(name, Json());
    state["vendorList"] = iab_ ? vendorList_.state() : Json();
    state["tcString"] = iab_ ? tcString_.state(state["store"]) : Json();
    state["center"] = display_.state();
    state["storeProblem"] = services_.status().storeProblem;
    Json changes = changed(reported_, state);
    if (changes.empty())
        return;
    report({{"kind", kind::kState}, {"body", std::move(changes)}});
    reported_ = std::move(state);
}

// The settings of services that are about to open the store.
services::Settings WatchedApplication::begin(const Launch& launch) {
    clock_.setOffset(launch.clockOffset);
    std::string userAgent = kUserAgent;
    if (!launch.played.empty()) {
        clock_.standAt(launch.played.value("now", std::uint64_t{0}));
        userAgent = launch.played.value("userAgent", userAgent);
        madeStoreProblem_ = makeStore(store_, launch.played, servicesLogger_);
    }
    turn_.readAgain();
    steps_.launch(launch, userAgent);
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
    settings.userAgent = userAgent;
    settings.logger = &servicesLogger_;
    settings.clock = &clock_;
    settings.notifications = &notifications_;
    return settings;
}

Platform WatchedApplication::doors(const Launch& launch) {
    const Platform platform = services_.platform();
    if (launch.mode == Mode::IAB)
        iab_.emplace(platform.store, servicesLogger_, tcfSettings(launch),
                     launch.played.value("createdDate", ""));
    if (!launch.played.empty())
        documents_.emplace(launch.played["files"].get<recording::Texts>());
    return {.store = platform.store,
            .documents = documents_ ? *documents_ : platform.documents,
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

Reply WatchedApplication::play(const std::string& step) {
    if (!documents_)
        return Problem{"no session is played"};
    isStarted_ = isStarted_ || !isOfBeginning(step);
    return playStep({.mode = iab_ ? Mode::IAB : Mode::Category,
                     .clock = clock_,
                     .turn = turn_,
                     .steps = steps_,
                     .display = display_,
                     .documents = *documents_,
                     .sdk = sdk_,
                     .callbacks = callbacks_},
                    step);
}

// As an application that comes to the foreground after a long time does.
void WatchedApplication::moveClock(milliseconds offset) {
    clock_.setOffset(offset);
    turn_.readAgain();
    steps_.step({{"do", "checkConsentValidity"}});
    VXMobilePrivacy::sharedInstance().checkConsentValidity();
}

} // namespace vx::tools::studio
