// The model of the IAB privacy center: vendors, purposes and the working consent. The publisher's
// restrictions are in VXIABRestrictions.cpp, the screens in VXIABPrivacyCenterScreens.cpp.

#include <algorithm>
#include <array>
#include <utility>

#include "vxprivacy/configuration/ConfigurationNames.h"
#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/iab_center/ConsentNumbers.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/iab/VXCMPStorage.h"

namespace vx {

namespace {

using Identifiers = VXIABPrivacyCenterViewController::Identifiers;

void add(const JSONValue& number, Identifiers& identifiers) {
    if (number.number())
        identifiers.add(number.integerValue());
}

void addAll(const JSONValue& numbers, Identifiers& identifiers) {
    for (const JSONValue& number : numbers.elements())
        add(number, identifiers);
}

// "2" before "10". A list without the section has none.
std::vector<std::string> sectionKeys(const JSONValue& section) {
    std::vector<std::string> keys;
    for (const auto& [key, item] : section.members())
        keys.emplace_back(key);
    std::ranges::stable_sort(keys, [](const std::string& left, const std::string& right) {
        const std::int32_t leftNumber = integerValue(left);
        const std::int32_t rightNumber = integerValue(right);
        return leftNumber != rightNumber ? leftNumber < rightNumber : left < right;
    });
    return keys;
}

std::vector<std::int32_t> mergedAndSorted(std::vector<std::int32_t> numbers,
                                          const std::vector<std::int32_t>& more) {
    numbers.insert(numbers.end(), more.begin(), more.end());
    std::ranges::sort(numbers);
    const auto doubled = std::ranges::unique(numbers);
    numbers.erase(doubled.begin(), doubled.end());
    return numbers;
}

// A translation of format 2 lacks purpose 11, whose texts are then empty, and all data categories.
void reportUntranslated(const JSONValue& list, const VXConfigurationFile& translation) {
    const JSONValue document = translation.getJSONDictionary();
    const auto report = [&](std::string_view section, std::string_view what) {
        const JSONValue translated = document[section];
        for (const auto& [key, item] : list[section].members())
            if (!translated[key])
                VXLogger::sharedInstance().logMessage(
                    formatted("%@ has no %@ %@ of the vendor list: its texts stay empty",
                              {translation.offlineName(), what, key}),
                    kLogProblem);
    };
    report("purposes", "purpose");
    if (VXCMPStorage::tellsDataUse())
        report("dataCategories", "data category");
}

} // namespace

VXIABPrivacyCenterViewController::VXIABPrivacyCenterViewController()
    : IABConf_(configurationFile(kVXVendorListConfiguration)) {
    if (IABConf_)
        JSONDictionary_ = IABConf_->getJSONDictionary();
    readVendors();
    if (const auto& language = VXMobilePrivacy::sharedInstance().languageCode())
        translationConf_ = configurationFile(formatted(kTranslationFormat, {*language}));
    if (translationConf_ && JSONDictionary_["gvlSpecificationVersion"].integerValue() >= 3)
        reportUntranslated(JSONDictionary_, *translationConf_);
}

// The names of a row's views carry its vendor's ID, and no name holds a minus: one such row would
// leave all others without their places.
void VXIABPrivacyCenterViewController::readVendors() {
    for (const auto& [key, entry] : JSONDictionary_["vendors"].members()) {
        VendorRecord record(key, entry);
        if (record.vendorID() >= 0)
            vendors_.set(key, std::move(record));
        else
            VXLogger::sharedInstance().logMessage(
                formatted("Vendor \"%@\" of the vendor list has the ID %d and is left out",
                          {key, record.vendorID()}),
                kLogProblem);
    }
}

void VXIABPrivacyCenterViewController::registerWithEngine() {
    VXMobilePrivacy::registerIABPrivacyCenter([]() -> std::unique_ptr<IABPrivacyCenter> {
        return std::make_unique<VXIABPrivacyCenterViewController>();
    });
}

void VXIABPrivacyCenterViewController::loadModel() {
    if (const auto file = configurationFile(kPrivacyConfiguration))
        configuration_ = VXPrivacyConfiguration::initFromConfiguration(*file);
    parsePublisherRestrictions();
    computeVendorsAndPurposes();
}

// Both entries of every vendor, whatever it declares, deliberately; none for special purposes and
// features, which are shown but never chosen.
void VXIABPrivacyCenterViewController::loadIABWithoutPC() {
    savedConsent_ = {};
    loadModel();
    const auto refuse = [this](std::string_view prefix, std::int32_t number) {
        savedConsent_.set(numberedKey(prefix, number), std::string(kConsentRefused));
    };
    for (const VendorRecord* record : recordsToDisplay()) {
        const std::int32_t n = record->vendorID();
        refuse(kVXVendorPrefix, consentNumber(kVXVendorOffset, n));
        refuse(kVXVendorPrefix, legitimateInterestNumber(kVXVendorOffset, n));
    }
    if (!declared_)
        return;
    for (std::int32_t purpose : declared_->purposes)
        refuse(kVXCategoryPrefix, consentNumber(kVXPurposeOffset, purpose));
    for (std::int32_t purpose : declared_->legitimateInterest)
        refuse(kVXCategoryPrefix, legitimateInterestNumber(kVXPurposeOffset, purpose));
    for (std::int32_t feature : declared_->specialFeatures)
        refuse(kVXFeaturePrefix, legitimateInterestNumber(kVXSpeFeatureOffset, feature));
}

void VXIABPrivacyCenterViewController::actionAcceptAll() {
    setAll(kConsentAccepted);
    close();
}

void VXIABPrivacyCenterViewController::actionRefuseAll() {
    setAll(kConsentRefused);
    close();
}

void VXIABPrivacyCenterViewController::actionSaveExit() {
    close();
}

void VXIABPrivacyCenterViewController::choose(std::string_view prefix, std::int32_t number,
                                              bool accepted) {
    savedConsent_.set(numberedKey(prefix, number), std::string(consentValue(accepted)));
}

void VXIABPrivacyCenterViewController::setAll(std::string_view value) {
    for (const auto& [key, chosen] : savedConsent_)
        savedConsent_.set(key, std::string(value)); // adds no key, so the order stays
}

void VXIABPrivacyCenterViewController::savePrivacy() {
    VXMobilePrivacy::sharedInstance().saveConsent(savedConsent_);
}

ConsentDictionary VXIABPrivacyCenterViewController::retrieveSavedConsent() {
    ConsentDictionary saved;
    for (const std::string& key : VXPrivacyAPI::getAllAcceptedConsent())
        if (auto value = VXUserDefaults::retrieveInfoFromUserDefaults(key))
            saved.set(key, std::move(*value));
    return saved;
}

// The IDs as the publisher wrote them, separated by commas; empty: all vendors of the list.
std::string VXIABPrivacyCenterViewController::configuredVendors() const {
    const JSONValue document = configuration_->getJSONDictionary();
    return std::string(document["information"]["vendors"].string().value_or(""));
}

void VXIABPrivacyCenterViewController::computeVendorsAndPurposes() {
    const std::string configured = configuredVendors();
    if (configured.empty())
        return;
    declared_.emplace();
    for (std::string_view id : split(configured, ','))
        if (const VendorRecord* found = vendors_.find(id))
            addDeclaredBy(found->entry());
        else
            VXLogger::sharedInstance().logMessage(
                formatted("The configured vendor \"%@\" is not in the vendor list", {id}),
                kLogProblem);
}

void VXIABPrivacyCenterViewController::addDeclaredBy(const JSONValue& vendor) {
    addPurposesFromVendor(vendor);
    addLegitimateInterestFromVendor(vendor);
    addAll(vendor["specialPurposes"], declared_->specialPurposes);
    addAll(vendor["features"], declared_->features);
    addAll(vendor["specialFeatures"], declared_->specialFeatures);
}

void VXIABPrivacyCenterViewController::addPurposesFromVendor(const JSONValue& vendor) {
    if (!declared_)
        return;
    const std::vector<std::int64_t> forbidden = purposesForbiddenTo(vendor["id"]);
    for (const JSONValue& purpose : vendor["purposes"].elements())
        if (std::ranges::find(forbidden, purpose.integerValue()) == forbidden.end())
            add(purpose, declared_->purposes);
}

// Restrictions never narrow these, deliberately.
void VXIABPrivacyCenterViewController::addLegitimateInterestFromVendor(const JSONValue& vendor) {
    if (declared_)
        addAll(vendor["legIntPurposes"], declared_->legitimateInterest);
}

// The configured vendors, each once, or else all of the list.
std::vector<const VendorRecord*> VXIABPrivacyCenterViewController::askedVendors() const {
    OrderedSet<const VendorRecord*> asked;
    const std::string configured = configuredVendors();
    if (configured.empty())
        for (const auto& [id, record] : vendors_)
            asked.add(&record);
    else
        for (std::string_view id : split(configured, ','))
            if (const VendorRecord* found = vendors_.find(id))
                asked.add(found);
    return asked.elements();
}

// Neither deletion nor the filter concerns a configured vendor, deliberately.
std::vector<const VendorRecord*> VXIABPrivacyCenterViewController::recordsToDisplay() const {
    std::vector<const VendorRecord*> byName = askedVendors();
    if (configuredVendors().empty())
        std::erase_if(byName, [this](const VendorRecord* record) {
            return record->deleted() || !isVendorRelatedToFilterCategory(record->entry());
        });
    std::ranges::stable_sort(byName, {}, &VendorRecord::name);
    return byName;
}

std::vector<std::int32_t> VXIABPrivacyCenterViewController::disclosedVendors() const {
    std::vector<std::int32_t> identifiers;
    for (const VendorRecord* record : askedVendors())
        if (!record->deleted())
            identifiers.push_back(record->vendorID());
    return identifiers;
}

std::vector<std::string> VXIABPrivacyCenterViewController::vendorsToDisplay() const {
    std::vector<std::string> ids;
    for (const VendorRecord* record : recordsToDisplay())
        ids.emplace_back(record->key());
    return ids;
}

std::optional<std::vector<std::string>>
VXIABPrivacyCenterViewController::keysToDisplay(std::string_view section) const {
    if (!declared_)
        return sectionKeys(JSONDictionary_[section]);
    const std::vector<std::int32_t> identifiers = declared_->of(section);
    if (identifiers.empty())
        return {};
    std::vector<std::string> keys;
    for (std::int32_t identifier : identifiers)
        keys.push_back(std::to_string(identifier));
    return keys;
}

std::vector<std::int32_t>
VXIABPrivacyCenterViewController::Declared::of(std::string_view section) const {
    if (section == "purposes")
        return mergedAndSorted(purposes.elements(), legitimateInterest.elements());
    if (section == "specialPurposes")
        return specialPurposes.elements();
    return section == "features" ? features.elements() : specialFeatures.elements();
}

bool VXIABPrivacyCenterViewController::isVendorRelatedToFilterCategory(
    const JSONValue& vendor) const {
    const auto declares = [&](std::string_view section) {
        const auto elements = vendor[section].elements();
        return std::ranges::find(elements, filterCategoryID_, &JSONValue::integerValue) !=
               elements.end();
    };
    switch (filterCategoryType_) {
    case 1:
        return declares("purposes") || declares("legIntPurposes");
    case 2:
        return declares("specialPurposes");
    case 3:
        return declares("features");
    case 4:
        return declares("specialFeatures");
    default:
        return true;
    }
}

// A number equal to an offset is none of its items.
void VXIABPrivacyCenterViewController::setFilter(std::int32_t number) {
    constexpr std::array offsets = {kVXPurposeOffset, kVXSpePurposeOffset, kVXFeatureOffset,
                                    kVXSpeFeatureOffset, 14000};
    for (std::size_t i = 0; i + 1 < offsets.size(); ++i)
        if (offsets[i] < number && number < offsets[i + 1]) {
            filterCategoryType_ = static_cast<std::int32_t>(i) + 1;
            filterCategoryID_ = number - offsets[i];
        }
}

} // namespace vx
