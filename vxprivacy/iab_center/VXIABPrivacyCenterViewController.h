#pragma once

#include "vxprivacy/configuration/VXPrivacyConfiguration.h"
#include "vxprivacy/engine/IABPrivacyCenter.h"
#include "vxprivacy/platform/core/VXConfigurationFile.h"
#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/foundation/OrderedSet.h"
#include "vxprivacy/platform/ui/ViewController.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The IAB privacy center's model: which vendors, purposes and features of the vendor list concern
/// the user, and what the user chose for them.
///
/// Made after start-up in IAB mode; it works on the vendor list that was there when it was made.
/// Application's thread.
class VXIABPrivacyCenterViewController : public ViewController, public IABPrivacyCenter {
public:
    /// IAB identifiers in the order in which they were first met.
    using Identifiers = OrderedSet<std::int32_t>;
    /// Purpose ID to vendor ID to type of restriction, "0" not allowed, "1" consent required, "2"
    /// legitimate interest required.
    using Restrictions = OrderedDictionary<OrderedDictionary<std::string>>;

    VXIABPrivacyCenterViewController();

    /// Makes the engine's `acceptAllConsent` and `refuseAllConsent` use this privacy center. An
    /// application in IAB mode calls it once, before it calls those.
    static void registerWithEngine();

    /// Say which screen comes first; without them it is the popup. Before `viewDidLoad`.
    void startWithPurposeScreen() { firstScreen_ = 1; }
    void startWithVendorScreen() { firstScreen_ = 2; }
    void viewDidLoad() override;
    void viewWillDisappear(bool animated) override;

    /// Everything that a screen would list, refused; without any screen.
    void loadIABWithoutPC() override;
    /// Set what `savedConsent` lists, and add nothing to it.
    void actionAcceptAll() override;
    void actionRefuseAll() override;
    /// Hands `savedConsent` to the engine.
    void savePrivacy();

    /// The accepted entries of the last save.
    static ConsentDictionary retrieveSavedConsent();
    /// Takes over the publisher's restrictions, where the application ships any, and hands them to
    /// the IAB library.
    void parsePublisherRestrictions();
    /// Hands `pubRestrictions`, where there are any, to the IAB library.
    void saveVendorRestriction() const;
    /// Collects what the configured vendors declare. Without configured vendors it changes nothing.
    void computeVendorsAndPurposes();
    /// Add what a record of the vendor list declares: to `purposes`, except what the publisher
    /// forbids the vendor; to `legitimateInterest`. Nothing where that set is absent.
    void addPurposesFromVendor(const JSONValue& vendor);
    void addLegitimateInterestFromVendor(const JSONValue& vendor);

    /// Vendor IDs by name: the configured vendors, or else all of the list but those deleted and
    /// those that the filter leaves out.
    std::vector<std::string> vendorsToDisplay() const;
    /// The IDs of a section of the vendor list that concern the configured vendors; absent when
    /// none do. Without configured vendors, all of the section.
    std::optional<std::vector<std::string>> keysToDisplay(std::string_view section) const;
    /// Whether a record of the vendor list declares what the filter asks for; without one, true.
    bool isVendorRelatedToFilterCategory(const JSONValue& vendor) const;
    /// Sets the filter from a number above one of the offsets; any other number changes nothing.
    void filterByNumber(std::int32_t number);

    const std::shared_ptr<VXConfigurationFile>& IABConf() const { return IABConf_; }
    const JSONValue& JSONDictionary() const { return JSONDictionary_; }
    /// Null without a language, or without its document.
    const std::shared_ptr<VXConfigurationFile>& translationConf() const { return translationConf_; }
    /// Null before the model is loaded, or without its document.
    const std::shared_ptr<VXPrivacyConfiguration>& configuration() const { return configuration_; }
    // What the configured vendors ask for; absent when none are configured.
    const std::optional<Identifiers>& purposes() const { return purposes_; }
    const std::optional<Identifiers>& legitimateInterest() const { return legitimateInterest_; }
    const std::optional<Identifiers>& specialPurposes() const { return specialPurposes_; }
    const std::optional<Identifiers>& features() const { return features_; }
    const std::optional<Identifiers>& specialFeatures() const { return specialFeatures_; }
    const ConsentDictionary& savedConsent() const override { return savedConsent_; }
    /// Absent when the application ships no restrictions.
    const std::optional<Restrictions>& pubRestrictions() const { return pubRestrictions_; }
    /// 0 none, 1 purpose, 2 special purpose, 3 feature, 4 special feature.
    std::int32_t filterCategoryType() const { return filterCategoryType_; }
    /// The identifier that vendors must declare.
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

    void loadModel();
    std::string configuredVendors() const;
    std::vector<const Vendor*> listedVendors() const;
    void addDeclaredBy(const JSONValue& vendor);
    std::vector<std::int32_t> purposesForbiddenTo(const JSONValue& vendorID) const;
    const Identifiers& identifiersOf(std::string_view section) const;
    void setAll(std::string_view value);

    std::shared_ptr<VXConfigurationFile> IABConf_;
    JSONValue JSONDictionary_;
    OrderedDictionary<Vendor> vendors_; // of the vendor list, by ID
    std::shared_ptr<VXConfigurationFile> translationConf_;
    std::shared_ptr<VXPrivacyConfiguration> configuration_;
    std::optional<Identifiers> purposes_;
    std::optional<Identifiers> legitimateInterest_;
    std::optional<Identifiers> specialPurposes_;
    std::optional<Identifiers> features_;
    std::optional<Identifiers> specialFeatures_;
    ConsentDictionary savedConsent_;
    std::optional<Restrictions> pubRestrictions_;
    std::int32_t filterCategoryType_ = 0;
    std::int32_t filterCategoryID_ = 0;
    std::int32_t firstScreen_ = 0;
};

} // namespace vx
