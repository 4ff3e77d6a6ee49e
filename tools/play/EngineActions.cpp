// Every action reads its arguments before it asks for the engine, which comes into being by that:
// a step that lacks one must have no effect.

#include "tools/play/Session.h"

namespace vx::tools::play {

namespace {

template <auto Operation>
void call(Session& session, const Step&) {
    (session.engine().*Operation)();
}

void setSiteID(Session& session, const Step& step) {
    const std::int32_t site = step.integer("siteID");
    const std::int32_t privacy = step.integer("privacyID");
    if (const auto container = step.optional(&Step::integer, "containerID"))
        session.engine().setSiteID(site, *container, privacy, session.world().sdk());
    else
        session.engine().setSiteID(site, privacy, session.world().sdk());
}

void customPCMSetSiteID(Session& session, const Step& step) {
    const std::int32_t site = step.integer("siteID");
    const std::int32_t privacy = step.integer("privacyID");
    if (const auto container = step.optional(&Step::integer, "containerID"))
        session.engine().customPCMSetSiteID(site, privacy, *container, session.world().sdk());
    else
        session.engine().customPCMSetSiteID(site, privacy);
}

void setLanguage(Session& session, const Step& step) {
    const std::string code = step.text("code");
    session.engine().setLanguage(code);
}

void setConsentUser(Session& session, const Step& step) {
    const std::string user = step.text("user");
    session.engine().setConsentUser(user);
}

void registerCallback(Session& session, const Step& step) {
    const auto answers = step.textsOrNull("answers");
    session.engine().registerCallback(
        answers ? session.world().callbacks({answers->begin(), answers->end()}) : nullptr);
}

void set(Session& session, const Step& step) {
    const auto switchDefaultState = step.optional(&Step::boolean, "switchDefaultState");
    const auto generatePublisherTC = step.optional(&Step::boolean, "generatePublisherTC");
    const auto vendorListVersion = step.optional(&Step::integer, "vendorListVersion");
    VXMobilePrivacy& engine = session.engine();
    engine.setSwitchDefaultState(switchDefaultState.value_or(engine.switchDefaultState()));
    engine.setGeneratePublisherTC(generatePublisherTC.value_or(engine.generatePublisherTC()));
    engine.setVendorListVersion(vendorListVersion.value_or(engine.vendorListVersion()));
}

void saveConsent(Session& session, const Step& step) {
    const ConsentDictionary consent = step.dictionary("consent");
    session.engine().saveConsent(consent);
}

void saveCustomCategories(Session& session, const Step& step) {
    const ConsentDictionary consent = step.dictionary("consent");
    session.engine().saveCustomCategoriesInSharedPreferences(consent);
}

void propagateConsent(Session& session, const Step& step) {
    const auto consent = step.dictionaryOrNull("consent");
    session.engine().propagateConsent(consent ? &*consent : nullptr);
}

void notify(Session& session, const Step& step) {
    Notification notification{step.text("name"), nullptr, {}};
    if (const auto keys = step.optional(&Step::keys, "userInfo")) {
        notification.userInfo.emplace();
        for (const std::string& key : *keys) // the engine looks at the keys alone
            notification.userInfo->set(key, "");
    }
    session.engine().onNotificationReceived(notification);
}

constexpr Action kEngineActions[] = {
    {"setSiteID", "siteID privacyID containerID", setSiteID},
    {"customPCMSetSiteID", "siteID privacyID containerID", customPCMSetSiteID},
    {"init", "", call<&VXMobilePrivacy::init>},
    {"reinit", "", call<&VXMobilePrivacy::reinit>},
    {"setLanguage", "code", setLanguage},
    {"setConsentUser", "user", setConsentUser},
    {"useCustomPublisherRestrictions", "", call<&VXMobilePrivacy::useCustomPublisherRestrictions>},
    {"registerCallback", "answers", registerCallback},
    {"set", "switchDefaultState generatePublisherTC vendorListVersion", set},
    {"saveConsent", "consent", saveConsent},
    {"saveCustomCategoriesInSharedPreferences", "consent", saveCustomCategories},
    {"propagateConsent", "consent", propagateConsent},
    {"acceptAllConsent", "", call<&VXMobilePrivacy::acceptAllConsent>},
    {"refuseAllConsent", "", call<&VXMobilePrivacy::refuseAllConsent>},
    {"viewConsent", "", call<&VXMobilePrivacy::viewConsent>},
    {"checkSavedConsent", "", call<&VXMobilePrivacy::checkSavedConsent>},
    {"checkConsentValidity", "", call<&VXMobilePrivacy::checkConsentValidity>},
    {"resetSavedConsent", "", call<&VXMobilePrivacy::resetSavedConsent>},
    {"enableSDK", "", call<&VXMobilePrivacy::enableSDK>},
    {"disableSDK", "", call<&VXMobilePrivacy::disableSDK>},
    {"notify", "name userInfo", notify},
};

} // namespace

std::span<const Action> engineActions() {
    return kEngineActions;
}

} // namespace vx::tools::play
