#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/engine/EngineState.h"
#include "vxprivacy/engine/IABPrivacyCenter.h"
#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/platform/core/VXSingleton.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// The numbers that an application is known by, each under its name: the operations that take plain
/// integers differ in their order.
struct VXPRIVACY_EXPORT Identifiers {
    std::int32_t site = 0;      ///< with `privacy` the privacy configuration; beacons carry both
    std::int32_t privacy = 0;   ///< the privacy configuration of the site
    std::int32_t container = 0; ///< for the door `ConfigurationDocuments` alone
};

/// The consent engine: one instance, started once with the application's identifiers, that keeps
/// what the user decided and makes it effective.
///
/// All of it works on the application's thread and answers from local data; nothing waits for the
/// network and nothing throws. What a saving operation stored is durable when it returns, and all
/// of it is stored or none; within a transaction that is open already, as in a callback that the
/// services' `poll` makes, it is when that ends. What goes wrong is logged. Notifications and
/// callbacks happen within the operation that causes them.
///
///     VXMobilePrivacy& engine = VXMobilePrivacy::sharedInstance();
///     engine.setSiteID({.site = 12, .privacy = 5});    // start-up
///     engine.acceptAllConsent();
///     engine.privacyState();      // 1, where the configuration has categories
class VXPRIVACY_EXPORT VXMobilePrivacy : public VXSingleton,
                                         public IVXEventSenderDelegate,
                                         public IVXEventListenerDelegate,
                                         private KeyValueStoreObserver {
public:
    /// The engine, made and initialised at first use. Needs a `Runtime`, with which it ends. Safe
    /// on any thread; the first call logs one line and begins to listen, on its own thread.
    static VXMobilePrivacy& sharedInstance();
    ~VXMobilePrivacy() override;

    /// Initialises the engine once; called again it does nothing. `sharedInstance` has done it.
    VXMobilePrivacy& init();
    /// Initialises the same object anew: IAB mode off, no language, no user, switches on by
    /// default, no publisher segment. Identifiers, tag SDK, callback and `privacyState` stay.
    VXMobilePrivacy& reinit();

    // Start-up. The application calls one of these, once, before it shows a privacy center or asks
    // `VXPrivacyAPI`. Registers the privacy configuration (and, with the IAB library, the vendor
    // list), restores saved consent into the tag SDK and checks its age. On a first start it arms
    // the display flag. A callback that is registered before hears of what was restored.

    /// The engine shares `vxInstance`, the tag SDK; it may be null: then nothing is kept as
    /// permanent data.
    void setSiteID(const Identifiers& identifiers, std::shared_ptr<Zentrix> vxInstance = nullptr);
    /// The same with plain integers, whose meaning is `Identifiers`'; what is left out is 0 or
    /// null.
    void setSiteID(std::int32_t siteID, std::int32_t containerID, std::int32_t privacyID,
                   std::shared_ptr<Zentrix> vxInstance);
    void setSiteID(std::int32_t siteID, std::int32_t privacyID,
                   std::shared_ptr<Zentrix> vxInstance);
    void setSiteID(std::int32_t siteID, std::int32_t privacyID);
    void setSiteID(std::int32_t siteID, std::int32_t containerID, std::int32_t privacyID);
    /// For an application that shows its own privacy center: registers no privacy configuration,
    /// and sets `vendorListVersion` to 146.
    void customPCMSetSiteID(const Identifiers& identifiers,
                            std::shared_ptr<Zentrix> vxInstance = nullptr);
    /// The same. Mind the order of the integers, which differs from `setSiteID`.
    void customPCMSetSiteID(std::int32_t siteID, std::int32_t privacyID, std::int32_t containerID,
                            std::shared_ptr<Zentrix> vxInstance);
    /// The same without container and tag SDK.
    void customPCMSetSiteID(std::int32_t siteID, std::int32_t privacyID);

    // Settings, to be made before a privacy center is. Those that register a file come after
    // start-up.

    /// Registers the IAB vendor list. Start-up has done it where the IAB library is there.
    void loadIAB();
    /// Registers the publisher-restrictions file, which the application ships as
    /// VXIABPublisherRestrictions.json.
    void useCustomPublisherRestrictions();
    /// Selects the language of the IAB texts and of the TC string, and registers the file of the
    /// texts: one of 25 two-letter codes in lower case. Any other code, "en" among them, changes
    /// nothing: the vendor list itself is in English.
    void setLanguage(std::string_view code);
    /// Whether `setLanguage` takes `code`.
    static bool supportsLanguage(std::string_view code);
    /// Identifier of the user for the beacon, or the name of a variable that holds it: with a tag
    /// SDK a permanent datum of it, else a predefined variable; else a core variable. Looked up for
    /// each beacon, and sent as it is when it names nothing. Without one, beacons name the
    /// installation.
    void setConsentUser(std::string_view user);
    /// Who hears of changes, shared with the engine; null: nobody any more. Registered before
    /// start-up it hears of what is restored and of consent that is too old.
    void registerCallback(std::shared_ptr<VXPrivacyCallbacks> callback);

    // Saving. A consent dictionary has consent keys ("PRIVACY_CAT_3") and values ("1" accepted, "0"
    // refused); `VXPrivacyConstants.h` has the numbers of IAB items.

    /// A privacy center's save: keeps the entries, switches the tag SDK on when one of them is
    /// accepted and else off, pushes them into it, calls back, writes the TC string in IAB mode,
    /// clears the display flag and sends the beacon. An entry that was saved before and is not
    /// among them stays, but is listed no more. A key of no kind is logged at level 4 and not kept.
    void saveConsent(const ConsentDictionary& consent);
    /// The save of an application's own category screen: keeps category entries, switches the tag
    /// SDK and calls back, without beacon, permanent data and display flag. Any value but "0"
    /// counts as acceptance here.
    void saveCustomCategoriesInSharedPreferences(const ConsentDictionary& consent);
    /// Accept (refuse) every category and subcategory of the privacy configuration and save.
    /// Without one either is saved as a refusal, since nothing is accepted. In IAB mode: the
    /// vendors that the IAB privacy center lists, and what configured vendors declare.
    void acceptAllConsent();
    void refuseAllConsent();
    /// How the IAB privacy center is made, for every engine of the process. Called through
    /// `VXIABPrivacyCenterViewController::registerWithEngine`. Without one, accept all and refuse
    /// all save nothing in IAB mode and say so in the log.
    static void registerIABPrivacyCenter(IABPrivacyCenterFactory factory);
    /// The first part of `saveConsent`, up to the callback; no TC string, display flag and beacon.
    /// Null: switches the tag SDK off, forgets all consent and calls back with nothing. Stores the
    /// time either way.
    void propagateConsent(const ConsentDictionary* consent);
    /// Forgets the saved consent, also in the tag SDK and the IAB library: all entries that are
    /// listed; one that a later save left out stays. The state is undecided then; time and display
    /// flag stay, the tag SDK is not stopped, and nobody is called back.
    void resetSavedConsent();

    // Reporting. Beacons go out as notifications; nothing is awaited.

    /// Reports that a privacy center was shown. The module's privacy centers do it themselves.
    void viewConsent();
    /// Sends a beacon: action 1 is a view, any other a save; types are "pc" and "pc_save". The
    /// second is what the first hands its call to.
    void sendConsentHit(std::int32_t action, std::string_view type);
    void sendConsentHitToVX(std::int32_t action, std::string_view type);
    /// Whom a beacon names at this moment, as `setConsentUser` says; absent when not even the
    /// installation has an identifier.
    std::optional<std::string> resolveUserID() const;

    // Steps of a save, none of them a save by itself. What they store is durable on return.

    /// Logs the keys of no kind at level 4, and takes none out.
    static void checkPrefixes(const ConsentDictionary& consent);
    /// Stores the entries whose keys begin with `prefix` and, where that is the prefix of a kind,
    /// their list; says whether one of them is accepted.
    static bool getCustomCategories(const ConsentDictionary& consent, std::string_view prefix);
    /// Does so for the three kinds, and switches the tag SDK on when an entry is accepted, else
    /// off.
    void saveInSharedPreferences(const ConsentDictionary& consent);
    /// Hands the entries of the three kinds to the tag SDK; nothing without one.
    void saveConsentInSDK(const ConsentDictionary& consent);
    /// Has the IAB library write the TC string of `consent`; nothing without the library.
    void saveConsentStringV2(const ConsentDictionary& consent);
    /// Stores the time of now as that of the last save.
    static void saveTimeOfConsent();

    // Steps of start-up, to be called again where an application keeps running for long.

    /// Restores saved consent into the tag SDK and calls back. Stores nothing. Where nothing was
    /// ever saved, the state is undecided and nobody is called back.
    void checkSavedConsent();
    /// Finds out whether the saved consent is too old, and if so arms the display flag and calls
    /// back. The entries stay as they are, and in force.
    void checkConsentValidity();

    /// Switch the tag SDK on or off, store the global consent and its time; nothing when
    /// `privacyState` says so already. The entries stay as they are.
    void enableSDK();
    void disableSDK();

    /// All saved keys: categories, vendors, features. Each list that is not empty contributes an
    /// empty key at its end, which users of this list depend on.
    static std::vector<std::string> getSavedCategoriesAndVendors();
    /// Appends the keys of `list`, the text of a saved one, to `keys`, the empty one included.
    static void appendByParsing(const std::optional<std::string>& list,
                                std::vector<std::string>& keys);
    /// The saved entries as a query string, "&key=value" each.
    static std::string categoriesToStartWith();
    /// The accepted ones of the saved list under the key `list`, their prefix left out, joined with
    /// commas: "1,2".
    static std::string addToHit(std::string_view list);
    /// The sender uses `center` from now on; the listener stays where it is, deliberately.
    void changeNotificationCenter(NotificationCenter& center) override;
    /// Hears that a configuration changed, and does what it asks for (VXConfigurationChange.h). Any
    /// other notification is ignored.
    void onNotificationReceived(const Notification& notification) override;

    // What the engine knows. References are good until the value is set again.

    /// Whether the IAB library is there, so that saves write TC strings.
    bool enableIAB() const { return state_.enableIAB; }
    /// 0 no decision known, 1 consent given, 2 consent refused.
    std::int32_t privacyState() const { return static_cast<std::int32_t>(state_.privacyState); }
    /// As start-up gave them; 0 before it.
    std::int32_t clientSiteID() const { return state_.clientSiteID; }
    std::int32_t privacyID() const { return state_.privacyID; }
    /// Whether the saved consent was too old when it was last checked.
    bool consentExpired() const { return state_.consentExpired; }
    /// Whether the TC string is to carry a publisher segment; false unless told otherwise.
    bool generatePublisherTC() const { return state_.generatePublisherTC; }
    void setGeneratePublisherTC(bool generate) { state_.generatePublisherTC = generate; }
    /// The tag SDK; null without one.
    const std::shared_ptr<Zentrix>& vxInstance() const { return state_.vxInstance; }
    /// What `setConsentUser` was given; absent before.
    const std::optional<std::string>& userID() const { return state_.userID; }
    /// Null when nobody is registered.
    const std::shared_ptr<VXPrivacyCallbacks>& callback() const { return state_.callback; }
    /// The vendor list's version that the TC string names when no list is loaded; 0 unless it was
    /// set.
    std::int32_t vendorListVersion() const { return state_.vendorListVersion; }
    void setVendorListVersion(std::int32_t version) { state_.vendorListVersion = version; }
    /// How the switch of a category stands for which nothing is saved; on unless told otherwise.
    bool switchDefaultState() const { return state_.switchDefaultState; }
    void setSwitchDefaultState(bool on) { state_.switchDefaultState = on; }
    /// The highest IAB vendor of which the last save accepted consent or legitimate interest; 0
    /// when there was none.
    std::int32_t maxVendorID() const { return state_.maxVendorID; }
    /// The code that `setLanguage` took; absent until then.
    const std::optional<std::string>& languageCode() const { return state_.languageCode; }
    /// The engine's notifications go out through the one and come in through the other.
    const VXEventSender& senderDelegate() const { return *state_.senderDelegate; }
    const VXEventListener& listenerDelegate() const { return *state_.listenerDelegate; }

private:
    VXMobilePrivacy();

    // What another process saved is taken over as at start-up.
    void entriesWillChange() override;
    void entriesChanged() override;

    void identify(const Identifiers& identifiers, std::shared_ptr<Zentrix> vxInstance);
    void restore();
    void saveAll(std::string_view value);
    void reportChange(bool significant);

    std::int32_t VX_INIT_STATE = 0; // 0 never, 1 running, 2 done, 3 wanted again
    EngineState state_;
    std::optional<ConsentDictionary> entriesBefore_; // while other processes' are to be taken over
};

} // namespace vx
