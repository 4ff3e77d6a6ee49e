// The IAB's keys, and how each value is written.

#include "vxprivacy/services/iab/CMPStorage.h"

#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/services/iab/InForceRules.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::services::tcf {

namespace {

constexpr std::string_view kCmpSdkID = "IABTCF_CmpSdkID";
constexpr std::string_view kCmpSdkVersion = "IABTCF_CmpSdkVersion";
constexpr std::string_view kPolicyVersion = "IABTCF_PolicyVersion";
constexpr std::string_view kGdprApplies = "IABTCF_gdprApplies";
constexpr std::string_view kPublisherCC = "IABTCF_PublisherCC";
constexpr std::string_view kPurposeOneTreatment = "IABTCF_PurposeOneTreatment";
constexpr std::string_view kUseNonStandardTexts = "IABTCF_UseNonStandardTexts";
constexpr std::string_view kUseNonStandardStacks = "IABTCF_UseNonStandardStacks"; // until 2.2
constexpr std::string_view kTCString = "IABTCF_TCString";
constexpr std::string_view kVendorConsents = "IABTCF_VendorConsents";
constexpr std::string_view kVendorLegitimateInterests = "IABTCF_VendorLegitimateInterests";
constexpr std::string_view kDisclosedVendors = "IABTCF_DisclosedVendors";
constexpr std::string_view kPurposeConsents = "IABTCF_PurposeConsents";
constexpr std::string_view kPurposeLegitimateInterests = "IABTCF_PurposeLegitimateInterests";
constexpr std::string_view kSpecialFeaturesOptIns = "IABTCF_SpecialFeaturesOptIns";
constexpr std::string_view kPublisherConsent = "IABTCF_PublisherConsent";
constexpr std::string_view kPublisherLegitimateInterests = "IABTCF_PublisherLegitimateInterests";
constexpr std::string_view kPublisherCustomPurposesConsents =
    "IABTCF_PublisherCustomPurposesConsents";
constexpr std::string_view kPublisherCustomPurposesLegitimateInterests =
    "IABTCF_PublisherCustomPurposesLegitimateInterests";
constexpr std::string_view kAdditionalConsent = "IABTCF_AddtlConsent"; // not the IAB's

constexpr std::string_view kNumbers[] = {
    kCmpSdkID,
    kCmpSdkVersion,
    kPolicyVersion,
    kGdprApplies,
    kPurposeOneTreatment,
    kUseNonStandardStacks,
    kUseNonStandardTexts,
};
constexpr std::string_view kTexts[] = {
    kPublisherCC,
    kTCString,
    kVendorConsents,
    kVendorLegitimateInterests,
    kDisclosedVendors,
    kPurposeConsents,
    kPurposeLegitimateInterests,
    kSpecialFeaturesOptIns,
    kPublisherConsent,
    kPublisherLegitimateInterests,
    kPublisherCustomPurposesConsents,
    kPublisherCustomPurposesLegitimateInterests,
    kAdditionalConsent,
};

std::string keyOfRestrictions(std::uint32_t purpose) {
    return "IABTCF_PublisherRestrictions" + std::to_string(purpose);
}

std::optional<std::uint32_t> numberIn(const std::optional<std::string>& text) {
    const auto number = text ? decimalInteger(*text) : std::nullopt;
    return number && *number >= 0 && *number <= kGreatestCMP
               ? std::optional(static_cast<std::uint32_t>(*number))
               : std::nullopt;
}

} // namespace

StoredTCData storedTCData(const KeyValueStore& store) {
    const auto applies = numberIn(store.get(kGdprApplies));
    return {numberIn(store.get(kCmpSdkID)),
            applies && *applies <= 1 ? std::optional(*applies == 1) : std::nullopt,
            store.get(kTCString), store.get(kAdditionalConsent)};
}

void CMPStorage::setNumber(std::string_view key, std::uint32_t value) {
    store_.set(key, std::to_string(value));
    if (sink_)
        sink_->setNumber(key, static_cast<std::int32_t>(value));
}

void CMPStorage::setText(std::string_view key, std::string_view value) {
    store_.set(key, value);
    if (sink_)
        sink_->setText(key, value);
}

void CMPStorage::remove(std::string_view key) {
    if (store_.get(key))
        store_.remove(key);
    if (sink_)
        sink_->remove(key);
}

void CMPStorage::putNumber(std::string_view key, std::optional<std::uint32_t> value) {
    if (value)
        setNumber(key, *value);
    else
        remove(key);
}

void CMPStorage::putText(std::string_view key, const std::optional<std::string>& value) {
    if (value)
        setText(key, *value);
    else
        remove(key);
}

void CMPStorage::setCMP(std::uint32_t cmp) {
    setNumber(kCmpSdkID, cmp);
}

void CMPStorage::announce(std::optional<std::uint32_t> cmp, std::optional<bool> gdprApplies) {
    putNumber(kCmpSdkID, cmp);
    putNumber(kGdprApplies, gdprApplies);
}

void CMPStorage::setTCString(std::string_view text) {
    if (text.empty())
        remove(kTCString);
    else
        setText(kTCString, text);
}

std::optional<std::string> CMPStorage::tcString() const {
    return store_.get(kTCString);
}

void CMPStorage::write(const TCData& data) {
    const TCModel& model = data.model;
    const std::uint32_t nonStandard = model.useNonStandardStacks;
    StoreTransaction transaction(store_);
    setCMP(model.cmpId);
    setNumber(kCmpSdkVersion, model.cmpVersion);
    setNumber(kPolicyVersion, model.tcfPolicyVersion);
    putNumber(kGdprApplies, data.gdprApplies);
    setText(kPublisherCC, model.publisherCC);
    setNumber(kPurposeOneTreatment, model.purposeOneTreatment);
    putNumber(kUseNonStandardStacks, data.underOldName ? std::optional(nonStandard) : std::nullopt);
    setNumber(kUseNonStandardTexts, nonStandard);
    setTCString(data.text);
    setText(kVendorConsents, digits(model.vendorConsent));
    setText(kVendorLegitimateInterests, digits(model.vendorLegitimateInterest));
    putText(kDisclosedVendors,
            model.disclosedVendors ? std::optional(digits(*model.disclosedVendors)) : std::nullopt);
    setText(kPurposeConsents, digits(model.purposesConsent, kPurposesWidth));
    setText(kPurposeLegitimateInterests, digits(model.purposesLITransparency, kPurposesWidth));
    setText(kSpecialFeaturesOptIns, digits(model.specialFeatureOptIns, kSpecialFeaturesWidth));
    putPublisher(model.publisherTC);
    putText(kAdditionalConsent, data.additionalConsent);
    putRestrictions(data.restrictions);
    transaction.commit();
}

void CMPStorage::putPublisher(const std::optional<PublisherTC>& publisher) {
    const auto put = [&](std::string_view key, IdentifierSet PublisherTC::*set,
                         std::uint32_t count) {
        putText(key, publisher ? std::optional(digits((*publisher).*set, count)) : std::nullopt);
    };
    const std::uint32_t custom = publisher ? publisher->customPurposes : 0;
    put(kPublisherConsent, &PublisherTC::purposesConsent, kPurposesWidth);
    put(kPublisherLegitimateInterests, &PublisherTC::purposesLITransparency, kPurposesWidth);
    put(kPublisherCustomPurposesConsents, &PublisherTC::customPurposesConsent, custom);
    put(kPublisherCustomPurposesLegitimateInterests, &PublisherTC::customPurposesLITransparency,
        custom);
}

void CMPStorage::putRestrictions(const RestrictionTexts& restrictions) {
    for (std::uint32_t purpose = 1; purpose <= kGreatestPurpose; ++purpose)
        if (const auto types = restrictions.find(purpose); types != restrictions.end())
            setText(keyOfRestrictions(purpose), types->second);
        else
            remove(keyOfRestrictions(purpose));
}

void CMPStorage::reset() {
    StoreTransaction transaction(store_);
    for (std::string_view key : kNumbers)
        remove(key);
    for (std::string_view key : kTexts)
        remove(key);
    putRestrictions({});
    transaction.commit();
}

void CMPStorage::mirror() const {
    if (!sink_)
        return;
    const auto tell = [&](std::string_view key, bool isNumber) {
        const auto value = store_.get(key);
        if (!value)
            sink_->remove(key);
        else if (isNumber)
            sink_->setNumber(key, integerValue(*value));
        else
            sink_->setText(key, *value);
    };
    for (std::string_view key : kNumbers)
        tell(key, true);
    for (std::string_view key : kTexts)
        tell(key, false);
    for (std::uint32_t purpose = 1; purpose <= kGreatestPurpose; ++purpose)
        tell(keyOfRestrictions(purpose), false);
}

} // namespace vx::services::tcf
