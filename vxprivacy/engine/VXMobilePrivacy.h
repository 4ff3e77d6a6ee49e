#pragma once

#include "vxprivacy/engine/IABPrivacyCenter.h"
#include "vxprivacy/engine/VXPrivacyCallbacks.h"
#include "vxprivacy/platform/core/VXEvents.h"
#include "vxprivacy/platform/core/VXSingleton.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/sdk/Zentrix.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The consent engine: one instance, started once with the application's identifiers, that keeps
/// what the user decided and makes it effective.
///
/// All of it works on the application's thread and answers from local data; nothing waits for the
/// network and nothing throws. What a saving operation stored is durable when it returns.
class VXMobilePrivacy : public VXSingleton,
                        public IVXEventSenderDelegate,
                        public IVXEventListenerDelegate {
public:
    /// The engine, made and initialised at first use. Needs a `Runtime`; safe on any thread.
    static VXMobilePrivacy& sharedInstance();
    ~VXMobilePrivacy() override;

    /// Initialises the engine once; called again it does nothing.
    VXMobilePrivacy& init();
    /// Initialises the same object anew: settings return to their defaults, the identifiers, the
    /// tag SDK and the callback stay.
    VXMobilePrivacy& reinit();

    // Start-up. The application calls one of these, once, before it shows a privacy center or asks
    // `VXPrivacyAPI`. Registers the privacy configuration (and, with the IAB library, the vendor
    // list), restores saved consent into the tag SDK and checks its age.

    /// `vxInstance` may be null: then nothing is kept as permanent data.
    void setSiteID(std::int32_t siteID, std::int32_t containerID, std::int32_t privacyID,
                   std::shared_ptr<Zentrix> vxInstance);
    void setSiteID(std::int32_t siteID, std::int32_t privacyID,
                   std::shared_ptr<Zentrix> vxInstance);
    void setSiteID(std::int32_t siteID, std::int32_t privacyID);
    void setSiteID(std::int32_t siteID, std::int32_t containerID, std::int32_t privacyID);
    /// For an application that shows its own privacy center: registers no privacy configuration.
    /// Mind the order of the identifiers, which differs from `setSiteID`.
    void customPCMSetSiteID(std::int32_t siteID, std::int32_t privacyID, std::int32_t containerID,
                            std::shared_ptr<Zentrix> vxInstance);
    void customPCMSetSiteID(std::int32_t siteID, std::int32_t privacyID);

    /// Registers the IAB vendor list. Part of start-up with the IAB library.
    void loadIAB();
    /// Registers the publisher-restrictions file, which the application ships.
    void useCustomPublisherRestrictions();
    /// Selects the language of the IAB texts and registers their file: one of 25 two-letter codes
    /// in lower case. Any other code, "en" among them, changes nothing.
    void setLanguage(std::string_view code);
    /// Whether `setLanguage` takes `code`.
    static bool supportsLanguage(std::string_view code);
    /// Identifier of the user for the beacon, or the name of a variable that holds it: a permanent
    /// datum of the tag SDK, else a predefined variable, else a core variable.
    void setConsentUser(std::string_view user);
    /// Who hears of changes; null: nobody any more.
    void registerCallback(std::shared_ptr<VXPrivacyCallbacks> callback);

    // Saving.

    /// A privacy center's save: keeps the entries, switches the tag SDK, tells everybody, clears
    /// the display flag and sends the beacon. All or nothing.
    void saveConsent(const ConsentDictionary& consent);
    /// The save of an application's own category screen: keeps category entries, switches the tag
    /// SDK and calls back, without beacon, permanent data and display flag. Any value but "0"
    /// counts as acceptance here.
    void saveCustomCategoriesInSharedPreferences(const ConsentDictionary& consent);
    /// Accepts (refuses) every category and subcategory of the privacy configuration and saves; in
    /// IAB mode, every vendor, purpose and special feature that the privacy center would list.
    void acceptAllConsent();
    void refuseAllConsent();
    /// How the IAB privacy center is made; it registers itself, for every engine of the process.
    /// Without one, nothing can be accepted or refused as a whole in IAB mode.
    static void registerIABPrivacyCenter(IABPrivacyCenterFactory factory);
    /// Keeps the entries, pushes them into the tag SDK and calls back; null: forgets all consent
    /// and switches the tag SDK off.
    void propagateConsent(const ConsentDictionary* consent);
    /// Forgets all saved consent.
    void resetSavedConsent();

    /// Reports that a privacy center was shown.
    void viewConsent();
    /// Sends a beacon: action 1 is a view, any other a save; types are "pc" and "pc_save".
    void sendConsentHit(std::int32_t action, std::string_view type);

    // Steps of start-up, to be called again where an application keeps running for long.

    /// Restores saved consent into the tag SDK and calls back.
    void checkSavedConsent();
    /// Finds out whether the saved consent is too old, and if so arms the display flag.
    void checkConsentValidity();

    /// Switch the tag SDK and the global consent on or off; nothing when they are already.
    void enableSDK();
    void disableSDK();

    /// All saved keys: categories, vendors, features. Each list that is not empty contributes an
    /// empty key at its end, which users of this list depend on.
    static std::vector<std::string> getSavedCategoriesAndVendors();
    /// The saved entries as a query string, "&key=value" each.
    static std::string categoriesToStartWith();

    /// The sender uses `center` from now on; the listener stays where it is, deliberately.
    void changeNotificationCenter(NotificationCenter& center) override;
    void onNotificationReceived(const Notification& notification) override;

    /// Whether the IAB library is there, so that saves write TC strings.
    bool enableIAB() const { return enableIAB_; }
    /// 0 no decision known, 1 consent given, 2 consent refused.
    std::int32_t privacyState() const { return privacyState_; }
    /// As start-up gave them; 0 before it.
    std::int32_t clientSiteID() const { return clientSiteID_; }
    std::int32_t privacyID() const { return privacyID_; }
    /// Whether the saved consent was too old when it was last checked.
    bool consentExpired() const { return consentExpired_; }
    /// Whether the TC string is to carry a publisher segment.
    bool generatePublisherTC() const { return generatePublisherTC_; }
    void setGeneratePublisherTC(bool generate) { generatePublisherTC_ = generate; }
    /// The tag SDK; null without one.
    const std::shared_ptr<Zentrix>& vxInstance() const { return vxInstance_; }
    /// What `setConsentUser` was given; absent before.
    const std::optional<std::string>& userID() const { return userID_; }
    /// Null when nobody is registered.
    const std::shared_ptr<VXPrivacyCallbacks>& callback() const { return callback_; }
    /// The vendor list's version that the TC string names when no list is loaded.
    std::int32_t vendorListVersion() const { return vendorListVersion_; }
    void setVendorListVersion(std::int32_t version) { vendorListVersion_ = version; }
    /// How a switch stands for which nothing is saved.
    bool switchDefaultState() const { return switchDefaultState_; }
    void setSwitchDefaultState(bool on) { switchDefaultState_ = on; }
    /// The highest accepted IAB vendor of the last save.
    std::int32_t maxVendorID() const { return maxVendorID_; }
    /// Absent until a language was selected.
    const std::optional<std::string>& languageCode() const { return languageCode_; }
    /// Through which the engine's notifications go out and come in.
    const VXEventSender& senderDelegate() const { return *senderDelegate_; }
    const VXEventListener& listenerDelegate() const { return *listenerDelegate_; }

private:
    VXMobilePrivacy();

    void armDisplayFlagOnFirstStart();
    void saveAllCategories(std::string_view value);
    void saveAllOfIAB(void (IABPrivacyCenter::*choose)());
    void saveConsentStringV2(const ConsentDictionary& consent);
    void checkPrefixes(const ConsentDictionary& consent) const;
    void saveInSharedPreferences(const ConsentDictionary& consent);
    void saveConsentInSDK(const ConsentDictionary& consent);
    void saveTimeOfConsent();
    bool switchSDKOn();
    bool switchSDKOff();
    void sendConsentHitToVX(std::int32_t action, std::string_view type);
    std::optional<std::string> resolveUserID() const;
    void reportChange(bool significant);
    std::shared_ptr<VXPrivacyCallbacks> callbackAnswering(std::string_view operation) const;

    std::int32_t VX_INIT_STATE = 0; // 0 never, 1 running, 2 done, 3 wanted again
    bool enableIAB_ = false;
    std::int32_t privacyState_ = 0;
    std::int32_t clientSiteID_ = 0;
    std::int32_t privacyID_ = 0;
    bool consentExpired_ = false;
    bool generatePublisherTC_ = false;
    std::shared_ptr<Zentrix> vxInstance_;
    std::optional<std::string> userID_;
    std::shared_ptr<VXPrivacyCallbacks> callback_;
    std::int32_t vendorListVersion_ = 0;
    bool switchDefaultState_ = true;
    std::int32_t maxVendorID_ = 0;
    std::optional<std::string> languageCode_;
    std::unique_ptr<VXEventSender> senderDelegate_;
    std::unique_ptr<VXEventListener> listenerDelegate_;
};

} // namespace vx
