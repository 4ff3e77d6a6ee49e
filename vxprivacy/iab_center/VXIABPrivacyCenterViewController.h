#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/configuration/VXPrivacyConfiguration.h"
#include "vxprivacy/engine/IABPrivacyCenter.h"
#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/foundation/OrderedSet.h"
#include "vxprivacy/platform/iab/IABLibrary.h"
#include "vxprivacy/platform/ui/Controls.h"
#include "vxprivacy/platform/ui/ViewController.h"

namespace vx {

/// The IAB privacy center's model: which vendors, purposes and features of the vendor list concern
/// the user, and what the user chose for them.
///
/// Made after start-up in IAB mode; it works on the vendor list that was there when it was made.
/// Without a list it has nothing to show and nothing to accept. What `savedConsent` lists is saved
/// when it disappears. Application's thread.
///
/// The publisher may configure vendors ("information" / "vendors" of the privacy configuration).
/// Then they and what they declare are asked for; otherwise all live vendors of the list are, and
/// screens show all purposes and features. Of a configured vendor that the list lacks the log says
/// so.
///
///     VXIABPrivacyCenterViewController center;   // vendors 8 and 24 are configured
///     center.loadIABWithoutPC();
///     center.savedConsent().find("PRIVACY_VEN_1015");   // "0": the consent of vendor 8
///     center.actionAcceptAll();
///     center.savedConsent().find("PRIVACY_VEN_1015");   // "1"
///     center.savePrivacy();                             // durable when this returns
class VXIABPrivacyCenterViewController : public ViewController, public IABPrivacyCenter {
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
    /// Loads the model: what was accepted before, the configuration, the restrictions, what the
    /// configured vendors declare.
    void viewDidLoad() override;
    /// Saves.
    void viewWillDisappear(bool animated) override;

    // Choosing.

    /// Loads the model and lists in `savedConsent`, refused: both entries of every vendor of
    /// `vendorsToDisplay`, whatever it declares, and one for each purpose, legitimate interest and
    /// special feature that configured vendors declare.
    void loadIABWithoutPC() override;
    /// Set what `savedConsent` lists to "1" or "0", and add nothing to it. Nothing is saved yet.
    void actionAcceptAll() override;
    void actionRefuseAll() override;
    /// Leaves `savedConsent` as it is.
    void actionSaveExit() {}
    /// Hands `savedConsent` to the engine's `saveConsent`.
    void savePrivacy();
    /// The accepted entries of the last save, by consent key; refused ones are not among them.
    /// Empty when nothing is accepted.
    static ConsentDictionary retrieveSavedConsent();
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
    /// The IDs of `section` ("purposes", "specialPurposes", "features"; any other:
    /// "specialFeatures") that configured vendors declare; absent when none do, and then no such
    /// section is shown. Purposes ascend, all else comes as it was met. Without configured vendors,
    /// all of the section of that name in the vendor list, ascending; absent when it has no such
    /// section.
    std::optional<std::vector<std::string>> keysToDisplay(std::string_view section) const;
    /// Whether a record of the vendor list declares what the filter asks for; without a filter,
    /// true.
    bool isVendorRelatedToFilterCategory(const JSONValue& vendor) const;
    /// Sets the filter from a number above one of the offsets and below the next, or below 14000:
    /// 10003 is purpose 3, 13002 special feature 2. Any other number, an offset itself included,
    /// changes nothing. This is not the numbering of consent keys, which takes two numbers an item.
    void displayRelatedVendorsList(std::int32_t number);

    // The model. References and pointers are good while the controller lives and loads nothing
    // anew.

    /// The vendor list; null when none was found.
    const std::shared_ptr<VXConfigurationFile>& IABConf() const { return IABConf_; }
    /// Its document as it was when this was made; absent without one.
    const JSONValue& JSONDictionary() const { return JSONDictionary_; }
    /// Null without a language, or without its document.
    const std::shared_ptr<VXConfigurationFile>& translationConf() const { return translationConf_; }
    /// Null before the model is loaded, or without its document.
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
    // The texts lie in the record's document.
    struct Vendor {
        std::string_view id;
        std::string_view name;
        JSONValue record;
    };

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

    void loadModel();
    std::string configuredVendors() const;
    std::vector<const Vendor*> listedVendors() const;
    void addDeclaredBy(const JSONValue& vendor);
    std::vector<std::int64_t> purposesForbiddenTo(const JSONValue& vendorID) const;
    void setAll(std::string_view value);

    std::shared_ptr<VXConfigurationFile> IABConf_;
    JSONValue JSONDictionary_;
    OrderedDictionary<Vendor> vendors_; // of the vendor list, by ID
    std::shared_ptr<VXConfigurationFile> translationConf_;
    std::shared_ptr<VXPrivacyConfiguration> configuration_;
    std::optional<Declared> declared_; // absent: no vendors are configured
    ConsentDictionary savedConsent_;
    std::optional<Restrictions> pubRestrictions_;
    std::shared_ptr<Switch> globalConsent_;
    std::int32_t filterCategoryType_ = 0;
    std::int32_t filterCategoryID_ = 0;
    std::int32_t firstScreen_ = 0;
};

} // namespace vx
