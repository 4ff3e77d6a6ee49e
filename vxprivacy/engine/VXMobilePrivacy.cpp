// The engine's operations: start-up, decisions, and hearing of changes. What a decision leads to
// lies in the units below: ConsentSave first.

#include "vxprivacy/engine/VXMobilePrivacy.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>
#include <utility>

#include "vxprivacy/configuration/ConfigurationNames.h"
#include "vxprivacy/configuration/VXPrivacyConfiguration.h"
#include "vxprivacy/engine/ConsentBeacon.h"
#include "vxprivacy/engine/ConsentSave.h"
#include "vxprivacy/engine/DecisionTransaction.h"
#include "vxprivacy/engine/GlobalDecision.h"
#include "vxprivacy/engine/SDKSwitch.h"
#include "vxprivacy/engine/SavedConsent.h"
#include "vxprivacy/engine/SavedEntries.h"
#include "vxprivacy/engine/TCStringContents.h"
#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXCoreInitialisation.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/iab/VXCMPStorage.h"

namespace vx {

namespace {

constexpr std::int32_t kVendorListVersionOfOwnCenter = 146;

// English is not among them: the vendor list itself carries the English texts.
constexpr std::array<std::string_view, 25> kTranslations = {
    "fr", "it", "es", "bg", "ca", "cs", "da", "de", "el", "et", "fi", "hu", "lt",
    "lv", "mt", "nl", "no", "pl", "pt", "ro", "ru", "sk", "sl", "sv", "zh"};

enum InitState : std::int32_t { Never = 0, Running = 1, Done = 2, WantedAgain = 3 };

VXConfigurationFileFactory& files() {
    return VXConfigurationFileFactory::sharedInstance();
}

} // namespace

VXMobilePrivacy::VXMobilePrivacy() {
    state_.engine = this;
    init();
}

VXMobilePrivacy::~VXMobilePrivacy() {
    platform().store.setObserver(nullptr);
    platform().notifications.removeObserver(*this);
}

VXMobilePrivacy& VXMobilePrivacy::sharedInstance() {
    VXSingleton& shared = Runtime::current().shared(
        typeid(VXMobilePrivacy), [] { return std::unique_ptr<VXSingleton>(new VXMobilePrivacy); });
    return static_cast<VXMobilePrivacy&>(shared);
}

VXMobilePrivacy& VXMobilePrivacy::init() {
    if (VX_INIT_STATE == Done)
        return *this;
    // A second initialisation inside the first is a programming error and waits forever,
    // deliberately.
    while (VX_INIT_STATE == Running)
        std::this_thread::sleep_for(std::chrono::hours(1));
    VX_INIT_STATE = Running;
    VXCoreInitialisation();
    state_.enableIAB = false;
    state_.languageCode.reset();
    state_.userID.reset();
    state_.senderDelegate = std::make_unique<VXEventSender>();
    state_.senderDelegate->setParent(this);
    state_.listenerDelegate = std::make_unique<VXEventListener>();
    state_.listenerDelegate->setParent(this);
    state_.switchDefaultState = true;
    state_.maxVendorID = 0;
    state_.generatePublisherTC = false;
    state_.listenerDelegate->listen(kVXNotification_ConfigurationChanged);
    VX_INIT_STATE = Done;
    VXLogger::sharedInstance().logMessage(
        formatted("Halvane Privacy module init with version: %@", {kVXPrivacyVersion}),
        kLogStartUp);
    return *this;
}

VXMobilePrivacy& VXMobilePrivacy::reinit() {
    VX_INIT_STATE = WantedAgain;
    return init();
}

void VXMobilePrivacy::setSiteID(const Identifiers& identifiers,
                                std::shared_ptr<Zentrix> vxInstance) {
    DecisionTransaction transaction(state_);
    identify(identifiers, std::move(vxInstance));
    files().initWithSiteID(identifiers.site, identifiers.container);
    files().addConfigurationFile(
        kPrivacyConfiguration,
        VXPrivacyConfiguration::initPrivacyWithSiteID(
            identifiers.site, identifiers.privacy, kPrivacyConfiguration, *state_.listenerDelegate),
        *this);
    SavedEntries::armDisplayFlagIfAbsent();
    restore();
    transaction.commit();
}

void VXMobilePrivacy::setSiteID(std::int32_t siteID, std::int32_t containerID,
                                std::int32_t privacyID, std::shared_ptr<Zentrix> vxInstance) {
    setSiteID({.site = siteID, .privacy = privacyID, .container = containerID},
              std::move(vxInstance));
}

void VXMobilePrivacy::setSiteID(std::int32_t siteID, std::int32_t privacyID,
                                std::shared_ptr<Zentrix> vxInstance) {
    setSiteID({.site = siteID, .privacy = privacyID}, std::move(vxInstance));
}

void VXMobilePrivacy::setSiteID(std::int32_t siteID, std::int32_t privacyID) {
    setSiteID({.site = siteID, .privacy = privacyID});
}

void VXMobilePrivacy::setSiteID(std::int32_t siteID, std::int32_t containerID,
                                std::int32_t privacyID) {
    setSiteID({.site = siteID, .privacy = privacyID, .container = containerID});
}

void VXMobilePrivacy::customPCMSetSiteID(const Identifiers& identifiers,
                                         std::shared_ptr<Zentrix> vxInstance) {
    DecisionTransaction transaction(state_);
    identify(identifiers, std::move(vxInstance));
    state_.vendorListVersion = kVendorListVersionOfOwnCenter;
    SavedEntries::armDisplayFlagIfAbsent(); // before the factory is told, deliberately
    files().initWithSiteID(identifiers.site, identifiers.container);
    restore();
    transaction.commit();
}

void VXMobilePrivacy::customPCMSetSiteID(std::int32_t siteID, std::int32_t privacyID,
                                         std::int32_t containerID,
                                         std::shared_ptr<Zentrix> vxInstance) {
    customPCMSetSiteID({.site = siteID, .privacy = privacyID, .container = containerID},
                       std::move(vxInstance));
}

void VXMobilePrivacy::customPCMSetSiteID(std::int32_t siteID, std::int32_t privacyID) {
    customPCMSetSiteID({.site = siteID, .privacy = privacyID});
}

void VXMobilePrivacy::identify(const Identifiers& identifiers,
                               std::shared_ptr<Zentrix> vxInstance) {
    state_.clientSiteID = identifiers.site;
    state_.privacyID = identifiers.privacy;
    state_.vxInstance = std::move(vxInstance);
    state_.enableIAB = VXCMPStorage::present();
    platform().store.setObserver(this);
}

void VXMobilePrivacy::restore() {
    if (state_.enableIAB)
        loadIAB();
    checkSavedConsent();
    checkConsentValidity();
}

void VXMobilePrivacy::loadIAB() {
    VXCMPStorage::setCMPSDKID();
    files().addConfigurationFile(kVXVendorListConfiguration, kVendorListVersionPath,
                                 platform().hosts.vendorList + "/v2/vendor-list.json");
}

void VXMobilePrivacy::useCustomPublisherRestrictions() {
    files().addConfigurationFile(kVXPublisherRestrictionConfiguration, "version");
}

bool VXMobilePrivacy::supportsLanguage(std::string_view code) {
    return std::ranges::find(kTranslations, code) != kTranslations.end();
}

void VXMobilePrivacy::setLanguage(std::string_view code) {
    if (!supportsLanguage(code))
        return;
    state_.languageCode = code;
    const std::string name = formatted(kTranslationFormat, {code});
    files().addConfigurationFile(name, kVendorListVersionPath,
                                 platform().hosts.vendorList + formatted("/v2/%@.json", {name}));
}

void VXMobilePrivacy::setConsentUser(std::string_view user) {
    state_.userID = user;
}

void VXMobilePrivacy::registerCallback(std::shared_ptr<VXPrivacyCallbacks> callback) {
    state_.callback = std::move(callback);
}

void VXMobilePrivacy::registerIABPrivacyCenter(IABPrivacyCenterFactory factory) {
    GlobalDecision::registerIABPrivacyCenter(factory);
}

void VXMobilePrivacy::acceptAllConsent() {
    saveAll(kConsentAccepted);
}

void VXMobilePrivacy::refuseAllConsent() {
    saveAll(kConsentRefused);
}

void VXMobilePrivacy::saveAll(std::string_view value) {
    DecisionTransaction transaction(state_);
    if (!state_.enableIAB)
        saveConsent(GlobalDecision::ofCategories(value));
    else if (const auto center = GlobalDecision::ofIAB(value))
        saveConsent(center->savedConsent());
    transaction.commit();
}

void VXMobilePrivacy::saveConsent(const ConsentDictionary& consent) {
    ConsentSave::saveConsent(consent, state_);
}

void VXMobilePrivacy::saveCustomCategoriesInSharedPreferences(const ConsentDictionary& consent) {
    ConsentSave::saveCustomCategories(consent, state_);
}

void VXMobilePrivacy::propagateConsent(const ConsentDictionary* consent) {
    ConsentSave::propagate(consent, state_);
}

void VXMobilePrivacy::resetSavedConsent() {
    SavedConsent::reset(state_);
}

void VXMobilePrivacy::viewConsent() {
    sendConsentHit(kBeaconView, kVXTypeActionViewPrivacyCenter);
}

void VXMobilePrivacy::sendConsentHit(std::int32_t action, std::string_view type) {
    sendConsentHitToVX(action, type);
}

void VXMobilePrivacy::sendConsentHitToVX(std::int32_t action, std::string_view type) {
    vx::sendConsentHitToVX(state_, action, type);
}

std::optional<std::string> VXMobilePrivacy::resolveUserID() const {
    return vx::resolveUserID(state_);
}

void VXMobilePrivacy::checkPrefixes(const ConsentDictionary& consent) {
    ConsentSave::checkPrefixes(consent);
}

bool VXMobilePrivacy::getCustomCategories(const ConsentDictionary& consent,
                                          std::string_view prefix) {
    StoreTransaction transaction = VXUserDefaults::transaction();
    const bool accepted = SavedEntries::getCustomCategories(consent, prefix);
    transaction.commit();
    return accepted;
}

void VXMobilePrivacy::saveInSharedPreferences(const ConsentDictionary& consent) {
    ConsentSave::saveInSharedPreferences(consent, state_);
}

void VXMobilePrivacy::saveConsentInSDK(const ConsentDictionary& consent) {
    ConsentSave::saveConsentInSDK(consent, state_);
}

void VXMobilePrivacy::saveConsentStringV2(const ConsentDictionary& consent) {
    StoreTransaction transaction = VXUserDefaults::transaction();
    vx::saveConsentStringV2(consent, state_);
    transaction.commit();
}

void VXMobilePrivacy::saveTimeOfConsent() {
    SavedEntries::saveTimeOfConsent();
}

void VXMobilePrivacy::checkSavedConsent() {
    SavedConsent::restore(state_);
}

void VXMobilePrivacy::checkConsentValidity() {
    SavedConsent::checkValidity(state_);
}

void VXMobilePrivacy::enableSDK() {
    SDKSwitch::enable(state_);
}

void VXMobilePrivacy::disableSDK() {
    SDKSwitch::disable(state_);
}

std::vector<std::string> VXMobilePrivacy::getSavedCategoriesAndVendors() {
    return SavedEntries::getSavedCategoriesAndVendors();
}

void VXMobilePrivacy::appendByParsing(const std::optional<std::string>& list,
                                      std::vector<std::string>& keys) {
    SavedEntries::appendByParsing(list, keys);
}

std::string VXMobilePrivacy::categoriesToStartWith() {
    return SavedEntries::categoriesToStartWith();
}

std::string VXMobilePrivacy::addToHit(std::string_view list) {
    return vx::addToHit(list);
}

void VXMobilePrivacy::changeNotificationCenter(NotificationCenter& center) {
    state_.senderDelegate->setNotificationCenter(center);
}

void VXMobilePrivacy::onNotificationReceived(const Notification& notification) {
    if (notification.name.find(kVXNotification_ConfigurationChanged) == std::string::npos)
        return;
    DecisionTransaction transaction(state_);
    const auto asksFor = [&](std::string_view key) {
        return notification.userInfo && notification.userInfo->contains(key);
    };
    if (asksFor(kVXUserInfo_ResetSave)) {
        SavedEntries::storeDisplayFlag(kMustDisplay);
        resetSavedConsent();
    }
    // Without a callback a significant change does not even arm the display flag, deliberately.
    if (state_.callback)
        reportChange(asksFor(kVXUserInfo_SignificantChanges));
    transaction.commit();
}

void VXMobilePrivacy::entriesWillChange() {
    if (!entriesBefore_)
        entriesBefore_ = SavedEntries::snapshot();
}

void VXMobilePrivacy::entriesChanged() {
    const auto before = std::exchange(entriesBefore_, std::nullopt);
    if (before && *before != SavedEntries::snapshot())
        SavedConsent::takeOver(*before, state_);
}

// Both operations are asked for with a colon and sent without one, deliberately.
void VXMobilePrivacy::reportChange(bool significant) {
    if (significant) {
        SavedEntries::storeDisplayFlag(kMustDisplay);
        if (const auto callback = state_.callbackAnswering("significantChangesInPrivacy:"))
            callback->significantChangesInPrivacy();
    }
    if (const auto callback = state_.callbackAnswering("consentCategoryChanged:"))
        callback->consentCategoryChanged();
}

} // namespace vx
