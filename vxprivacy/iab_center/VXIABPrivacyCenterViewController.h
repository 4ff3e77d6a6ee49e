#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/configuration/VXPrivacyConfiguration.h"
#include "vxprivacy/engine/IABPrivacyCenter.h"
#include "vxprivacy/iab_center/VendorRecord.h"
#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/foundation/OrderedSet.h"
#include "vxprivacy/platform/iab/IABLibrary.h"
#include "vxprivacy/platform/ui/Controls.h"
#include "vxprivacy/platform/ui/ViewController.h"
#include "vxprivacy/platform/ui/VisualFormat.h"

namespace vx {

class ContentView;
class VXPopUpContentView;
class VXPurposeContentView;
class VXVendorContentView;

/// The IAB privacy center: which vendors, purposes and features of the vendor list concern the
/// user, what the user chose for them, and the five screens on which that is read and chosen, of
/// which one is shown at a time.
///
/// Made after start-up in IAB mode and presented as `ViewController` says; it lists what the vendor
/// list had when it was made, in the words that the list or its translation has when a screen is
/// built. Without a list it has nothing to show and nothing to accept. What `savedConsent` lists is
/// saved when it disappears. User-interface thread, which is the application's.
///
/// The publisher may configure vendors ("information" / "vendors" of the privacy configuration).
/// Then they and what they declare are asked for; otherwise all live vendors of the list are, and
/// screens show all purposes and features. Of a configured vendor that the list lacks the log says
/// so.
///
///     VXIABPrivacyCenterViewController center;
///     presenter.presentViewController(center);
///     center.setDelegate(this);           // accept, refuse and save take the center away
///     center.view()->setSize(375, 667);
///     center.viewDidLoad();               // builds the screens, sends the view beacon
///     center.viewDidAppear(true);
///
/// The engine accepts and refuses all without a screen:
///
///     VXIABPrivacyCenterViewController center;   // vendors 8 and 24 are configured
///     center.loadIABWithoutPC();
///     center.savedConsent().find("PRIVACY_VEN_1015");   // "0": the consent of vendor 8
///     center.actionAcceptAll();
///     center.savedConsent().find("PRIVACY_VEN_1015");   // "1"
///     center.savePrivacy();                             // durable when this returns
class VXPRIVACY_EXPORT VXIABPrivacyCenterViewController : public ViewController,
                                                          public IABPrivacyCenter {
public:
    /// IAB identifiers, each once, in the order in which they were first met.
    using Identifiers = OrderedSet<std::int32_t>;
    using Restrictions = ExplicitRestrictions;

    /// Takes the vendor list and its translation. Needs a `Runtime`. Time: the number of vendors.
    VXIABPrivacyCenterViewController();

    /// Makes the engine's `acceptAllConsent` and `refuseAllConsent` use this privacy center, for
    /// the whole process. `services::TCFLibrary` calls it. An application with an `IABLibrary` of
    /// its own calls it once, before it calls those.
    static void registerWithEngine();

    // The display's calls; see `ViewController`.

    /// Say which screen comes first; without them it is the popup. Before `viewDidLoad`.
    void startWithPurposeScreen() { firstScreen_ = 1; }
    void startWithVendorScreen() { firstScreen_ = 2; }
    /// 0 popup, 1 purposes, 2 vendors; any other number shows nothing.
    void setFirstScreen(std::int32_t screen) { firstScreen_ = screen; }
    /// Loads the model (what was accepted before, the configuration, the restrictions, what the
    /// configured vendors declare), builds the screens, shows the first one and reports that the
    /// center is shown. The view's width must be set before. To be called once.
    void viewDidLoad() override;
    /// Lets the popup accept and refuse where all of it is seen.
    void viewDidAppear(bool animated) override;
    /// Tells the IAB library which vendors were shown, and saves.
    void viewWillDisappear(bool animated) override;
    bool prefersStatusBarHidden() const override { return true; }
    /// Whether closing dismisses the center; else it is popped. Yes without a navigation
    /// controller, whoever shows it.
    bool isModal() const;

    // Choosing.

    /// Loads the model and lists in `savedConsent`, refused: both entries of every vendor of
    /// `vendorsToDisplay`, whatever it declares, and one for each purpose, legitimate interest and
    /// special feature that configured vendors declare.
    void loadIABWithoutPC() override;
    /// Set what `savedConsent` lists to "1" or "0", and add nothing to it; then close. What is
    /// chosen is saved when the center disappears.
    void actionAcceptAll() override;
    void actionRefuseAll() override;
    /// Closes and leaves `savedConsent` as it is. Without a presenter and a navigation controller
    /// closing does nothing. The delegate may end the center in it.
    void actionSaveExit();
    /// Notes what the user chose under a key of `prefix` and `number`.
    void choose(std::string_view prefix, std::int32_t number, bool accepted);
    /// Hands `savedConsent` to the engine's `saveConsent`.
    void savePrivacy();
    /// The accepted entries of the last save, by consent key; refused ones are not among them.
    /// Empty when nothing is accepted.
    static ConsentDictionary retrieveSavedConsent();

    // Showing a screen, at its top. The vendor list is built anew each time; the details are those
    // that their screen has chosen, and nothing happens where it has none.
    void displayPopUpScreen();
    void displayPurposeScreen();
    void displayVendorList();
    /// The vendors related to an item, by its number: the filter (`setFilter`) holds for this list.
    void displayRelatedVendorsList(std::int32_t number);
    void displayVendorDetail();
    void displayPurposeDetail();

    // What the screens are made of.

    /// The text of the privacy configuration at `path`, in the engine's language where it has one.
    /// Missing where the configuration has texts and lacks this one.
    std::optional<std::string> getTranslation(std::string_view path) const;
    /// The text at `path` of the vendor list's translation, or of the list itself where there is no
    /// translation. There is no fallback from one to the other, deliberately. In place of a legal
    /// text ("purposes/1/descriptionLegal") that is missing stand the illustrations of format 3, or
    /// the description where there are none.
    std::optional<std::string> getIABTranslation(std::string_view path) const;
    enum class LabelType { Title = 1, Text = 2 };
    /// A missing text is an empty one.
    std::shared_ptr<Label> createLabel(LabelType type,
                                       const std::optional<std::string>& text) const;
    /// On where `savedConsent` has "1" under `prefix` and `number`. Where it has nothing, the
    /// switch stands as `legitimateInterest` says, and is listed there so: whatever has a switch is
    /// saved. It has no action.
    std::shared_ptr<Switch> createSwitchBtn(std::int32_t number, std::string_view prefix,
                                            bool legitimateInterest = false);
    /// A box with a line around it.
    std::shared_ptr<View> createStackView(std::int32_t tag) const;
    /// Makes the first words of the label that are the text of "generic/partnersLinkText", whatever
    /// their case, look like a link.
    void addOurPartnersLinkToLabel(Label& label) const;
    /// "oneThirdH" and "aboutHalfH", in points: 0.3 and 0.4 of the width, whatever they promise.
    const MetricsDictionary& metrics() const { return metrics_; }
    /// Makes layout names unique: all screens count on, and none starts again.
    std::int32_t numberOfViews() const { return numberOfViews_; }
    void setNumberOfViews(std::int32_t number) { numberOfViews_ = number; }
    /// Attach the constraints of a format over `viewsDictionary` and `metrics` to `view`; the
    /// second puts `numberOfViews` in place of "%d" before.
    void attachConstraint(std::string_view format, View& view) const;
    void attachFormattedConstraint(std::string_view format, View& view) const;
    /// Has the screen shown fill the view. Showing one does so.
    void reAttachConstraints();

    // The screens. Null before the view is loaded.
    const std::shared_ptr<VXPopUpContentView>& popupContentView() const {
        return popupContentView_;
    }
    const std::shared_ptr<VXPurposeContentView>& purposeContentView() const {
        return purposeContentView_;
    }
    /// The one shown last.
    const std::shared_ptr<VXVendorContentView>& vendorContentView() const {
        return vendorContentView_;
    }
    /// Null while none is shown.
    const std::shared_ptr<ContentView>& currentScreen() const { return currentScreen_; }
    /// Its root.
    std::shared_ptr<View> currentContentView() const;
    /// "view" and, while a screen is shown, "contentView".
    const ViewsDictionary& viewsDictionary() const { return viewsDictionary_; }

    // Steps of loading the model.

    /// Takes over the publisher's restrictions and hands them to the IAB library. Nothing where the
    /// application did not call `useCustomPublisherRestrictions` or ships no such file.
    void parsePublisherRestrictions();
    /// Hands `pubRestrictions`, where there are any, to the IAB library, in both of its forms. From
    /// the filled one a vendor ID outside 1 to 65535 is left out and logged.
    void saveVendorRestriction() const;
    /// Collects what the configured vendors declare, anew. Without configured vendors it changes
    /// nothing.
    void computeVendorsAndPurposes();
    /// Add what a record of the vendor list declares: to `purposes`, except what the publisher
    /// forbids the vendor; to `legitimateInterest`, which restrictions never narrow, deliberately.
    /// Nothing where that set is absent.
    void addPurposesFromVendor(const JSONValue& vendor);
    void addLegitimateInterestFromVendor(const JSONValue& vendor);

    // What screens list. IDs are texts, as the vendor list has them.

    /// The configured vendors, or else all of the list but those deleted and those that the filter
    /// leaves out. In the order of their names, compared letter for letter: "A", "a", "b".
    std::vector<std::string> vendorsToDisplay() const;
    /// The same vendors' records.
    std::vector<const VendorRecord*> recordsToDisplay() const;
    /// The IDs of `section` ("purposes", "specialPurposes", "features"; any other:
    /// "specialFeatures") that configured vendors declare; absent when none do, and then no such
    /// section is shown. Purposes ascend, all else comes as it was met. Without configured vendors,
    /// all of the section of that name in the vendor list, ascending.
    std::optional<std::vector<std::string>> keysToDisplay(std::string_view section) const;
    /// Whether a record of the vendor list declares what the filter asks for; without a filter,
    /// true.
    bool isVendorRelatedToFilterCategory(const JSONValue& vendor) const;
    /// Sets the filter from a number above one of the offsets and below the next, or below 14000:
    /// 10003 is purpose 3, 13002 special feature 2. Any other number, an offset itself included,
    /// changes nothing. This is not the numbering of consent keys, which takes two numbers an item.
    void setFilter(std::int32_t number);

    // The model. References and pointers are good while the controller lives and loads nothing
    // anew.

    /// The vendor list; null when none was found.
    const std::shared_ptr<VXConfigurationFile>& IABConf() const { return IABConf_; }
    /// Its document as it was when this was made; absent without one.
    const JSONValue& JSONDictionary() const { return JSONDictionary_; }
    /// Null without a language, or without its document.
    const std::shared_ptr<VXConfigurationFile>& translationConf() const { return translationConf_; }
    /// Never null; empty before the model is loaded, or without its document.
    const std::shared_ptr<VXPrivacyConfiguration>& configuration() const { return configuration_; }
    // What the configured vendors declare; null when none are configured.
    const Identifiers* purposes() const { return declared_ ? &declared_->purposes : nullptr; }
    const Identifiers* legitimateInterest() const {
        return declared_ ? &declared_->legitimateInterest : nullptr;
    }
    const Identifiers* specialPurposes() const {
        return declared_ ? &declared_->specialPurposes : nullptr;
    }
    const Identifiers* features() const { return declared_ ? &declared_->features : nullptr; }
    const Identifiers* specialFeatures() const {
        return declared_ ? &declared_->specialFeatures : nullptr;
    }
    /// The choices as they stand, by consent key: "1" accepted, "0" refused.
    const ConsentDictionary& savedConsent() const override { return savedConsent_; }
    /// Absent when the application ships no restrictions.
    const std::optional<Restrictions>& pubRestrictions() const { return pubRestrictions_; }
    /// Always null: the screens have no switch for everything, deliberately.
    const std::shared_ptr<Switch>& globalConsent() const { return globalConsent_; }

    // The filter of the vendors.

    /// 0 none, 1 purpose, 2 special purpose, 3 feature, 4 special feature.
    std::int32_t filterCategoryType() const { return filterCategoryType_; }
    /// The IAB identifier that vendors must declare; 0 without a filter.
    std::int32_t filterCategoryID() const { return filterCategoryID_; }
    /// 0 popup, 1 purposes, 2 vendors.
    std::int32_t firstScreen() const { return firstScreen_; }

private:
    // What the configured vendors declare, each identifier once.
    struct Declared {
        Identifiers purposes;
        Identifiers legitimateInterest;
        Identifiers specialPurposes;
        Identifiers features;
        Identifiers specialFeatures;

        /// Those of a section of the vendor list; purposes ascending, all else as they were met.
        std::vector<std::int32_t> of(std::string_view section) const;
    };

    void readVendors();
    void loadModel();
    void createInterface();
    void showFirstScreen();
    void show(const std::shared_ptr<ContentView>& screen);
    void close();
    std::string configuredVendors() const;
    std::vector<const VendorRecord*> askedVendors() const;
    std::vector<std::int32_t> disclosedVendors() const;
    void addDeclaredBy(const JSONValue& vendor);
    std::vector<std::int64_t> purposesForbiddenTo(const JSONValue& vendorID) const;
    void setAll(std::string_view value);

    std::shared_ptr<VXConfigurationFile> IABConf_;
    JSONValue JSONDictionary_;
    OrderedDictionary<VendorRecord> vendors_; // of the vendor list, by ID
    std::shared_ptr<VXConfigurationFile> translationConf_;
    std::shared_ptr<VXPrivacyConfiguration> configuration_ =
        std::make_shared<VXPrivacyConfiguration>();
    std::optional<Declared> declared_; // absent: no vendors are configured
    ConsentDictionary savedConsent_;
    std::optional<Restrictions> pubRestrictions_;
    std::shared_ptr<Switch> globalConsent_;
    std::int32_t filterCategoryType_ = 0;
    std::int32_t filterCategoryID_ = 0;
    std::int32_t firstScreen_ = 0;

    std::shared_ptr<VXPopUpContentView> popupContentView_;
    std::shared_ptr<VXPurposeContentView> purposeContentView_;
    std::shared_ptr<VXVendorContentView> vendorContentView_;
    std::shared_ptr<ContentView> currentScreen_;
    ViewsDictionary viewsDictionary_;
    MetricsDictionary metrics_;
    std::int32_t numberOfViews_ = 0;
};

} // namespace vx
