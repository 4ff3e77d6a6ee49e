#include "vxprivacy/engine/VXMobilePrivacy.h"

#include "vxprivacy/configuration/VXPrivacyConfiguration.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXCoreInitialisation.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/iab/VXCMPStorage.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>
#include <utility>

namespace vx {

namespace {

constexpr std::string_view kPrivacyFile = "privacy";
constexpr std::string_view kVendorListVersionPath = "vendorListVersion";

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
    init();
}

VXMobilePrivacy::~VXMobilePrivacy() {
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
    enableIAB_ = false;
    languageCode_.reset();
    userID_.reset();
    senderDelegate_ = std::make_unique<VXEventSender>();
    senderDelegate_->setParent(this);
    listenerDelegate_ = std::make_unique<VXEventListener>();
    listenerDelegate_->setParent(this);
    switchDefaultState_ = true;
    maxVendorID_ = 0;
    generatePublisherTC_ = false;
    listenerDelegate_->listen(kVXNotification_ConfigurationChanged);
    VX_INIT_STATE = Done;
    VXLogger::sharedInstance().logMessage(
        formatted("Halvane Privacy module init with version: %@", {kVXPrivacyVersion}), 2);
    return *this;
}

VXMobilePrivacy& VXMobilePrivacy::reinit() {
    VX_INIT_STATE = WantedAgain;
    return init();
}

void VXMobilePrivacy::setSiteID(std::int32_t siteID, std::int32_t containerID,
                                std::int32_t privacyID, std::shared_ptr<Zentrix> vxInstance) {
    StoreTransaction transaction = VXUserDefaults::transaction();
    clientSiteID_ = siteID;
    privacyID_ = privacyID;
    vxInstance_ = std::move(vxInstance);
    enableIAB_ = VXCMPStorage::present();
    files().initWithSiteID(siteID, containerID);
    files().addConfigurationFile(kPrivacyFile,
                                 VXPrivacyConfiguration::initPrivacyWithSiteID(
                                     siteID, privacyID, kPrivacyFile, *listenerDelegate_),
                                 *this);
    armDisplayFlagOnFirstStart();
    if (enableIAB_)
        loadIAB();
    checkSavedConsent();
    checkConsentValidity();
    transaction.commit();
}

void VXMobilePrivacy::setSiteID(std::int32_t siteID, std::int32_t privacyID,
                                std::shared_ptr<Zentrix> vxInstance) {
    setSiteID(siteID, 0, privacyID, std::move(vxInstance));
}

void VXMobilePrivacy::setSiteID(std::int32_t siteID, std::int32_t privacyID) {
    setSiteID(siteID, 0, privacyID, nullptr);
}

void VXMobilePrivacy::setSiteID(std::int32_t siteID, std::int32_t containerID,
                                std::int32_t privacyID) {
    setSiteID(siteID, containerID, privacyID, nullptr);
}

void VXMobilePrivacy::customPCMSetSiteID(std::int32_t siteID, std::int32_t privacyID,
                                         std::int32_t containerID,
                                         std::shared_ptr<Zentrix> vxInstance) {
    StoreTransaction transaction = VXUserDefaults::transaction();
    clientSiteID_ = siteID;
    privacyID_ = privacyID;
    vxInstance_ = std::move(vxInstance);
    enableIAB_ = VXCMPStorage::present();
    vendorListVersion_ = 146;
    armDisplayFlagOnFirstStart(); // before the factory is told, deliberately
    files().initWithSiteID(siteID, containerID);
    if (enableIAB_)
        loadIAB();
    checkSavedConsent();
    checkConsentValidity();
    transaction.commit();
}

void VXMobilePrivacy::customPCMSetSiteID(std::int32_t siteID, std::int32_t privacyID) {
    customPCMSetSiteID(siteID, privacyID, 0, nullptr);
}

void VXMobilePrivacy::armDisplayFlagOnFirstStart() {
    if (!VXUserDefaults::retrieveInfoFromUserDefaults(kVXShouldDisplayPrivacyCenter))
        VXUserDefaults::saveInfoToUserDefaults("1", kVXShouldDisplayPrivacyCenter);
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
    languageCode_ = code;
    const std::string name = formatted("purposes-%@", {code});
    files().addConfigurationFile(name, kVendorListVersionPath,
                                 platform().hosts.vendorList + formatted("/v2/%@.json", {name}));
}

void VXMobilePrivacy::setConsentUser(std::string_view user) {
    userID_ = user;
}

} // namespace vx
