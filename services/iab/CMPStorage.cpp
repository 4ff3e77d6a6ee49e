#include "services/iab/CMPStorage.h"

#include <initializer_list>

#include "services/iab/Layout.h"

namespace vx::services::tcf {

namespace {

constexpr std::string_view kCmpSdkID = "IABTCF_CmpSdkID";
constexpr std::string_view kCmpSdkVersion = "IABTCF_CmpSdkVersion";
constexpr std::string_view kPolicyVersion = "IABTCF_PolicyVersion";
constexpr std::string_view kGdprApplies = "IABTCF_gdprApplies";
constexpr std::string_view kPublisherCC = "IABTCF_PublisherCC";
constexpr std::string_view kPurposeOneTreatment = "IABTCF_PurposeOneTreatment";
constexpr std::string_view kUseNonStandardStacks = "IABTCF_UseNonStandardStacks";
constexpr std::string_view kTCString = "IABTCF_TCString";
constexpr std::string_view kVendorConsents = "IABTCF_VendorConsents";
constexpr std::string_view kVendorLegitimateInterests = "IABTCF_VendorLegitimateInterests";
constexpr std::string_view kPurposeConsents = "IABTCF_PurposeConsents";
constexpr std::string_view kPurposeLegitimateInterests = "IABTCF_PurposeLegitimateInterests";
constexpr std::string_view kSpecialFeaturesOptIns = "IABTCF_SpecialFeaturesOptIns";
constexpr std::string_view kPublisherConsent = "IABTCF_PublisherConsent";
constexpr std::string_view kPublisherLegitimateInterests = "IABTCF_PublisherLegitimateInterests";
constexpr std::string_view kPublisherCustomPurposesConsents =
    "IABTCF_PublisherCustomPurposesConsents";
constexpr std::string_view kPublisherCustomPurposesLegitimateInterests =
    "IABTCF_PublisherCustomPurposesLegitimateInterests";

std::string keyOfRestrictions(int purpose) {
    return "IABTCF_PublisherRestrictions" + std::to_string(purpose);
}

std::string digits(const IdentifierSet& set, std::uint32_t count) {
    std::string text(count, '0');
    set.forEachRange([&](std::uint32_t first, std::uint32_t last) {
        text.replace(first - 1, last - first + 1, last - first + 1, '1');
    });
    return text;
}

std::string digits(const VendorSection& section) {
    return digits(section.vendors, section.maxVendorId);
}

} // namespace

void CMPStorage::put(std::string_view key, const std::optional<std::string>& value) {
    if (value)
        store_.set(key, *value);
    else if (store_.get(key))
        store_.remove(key);
}

void CMPStorage::setCMP(std::uint32_t cmp) {
    put(kCmpSdkID, std::to_string(cmp));
}

void CMPStorage::setTCString(std::string_view text) {
    put(kTCString, text.empty() ? std::nullopt : std::optional(std::string(text)));
}

std::optional<std::string> CMPStorage::tcString() const {
    return store_.get(kTCString);
}

void CMPStorage::setRestrictions(int purpose, const std::optional<std::string>& types) {
    put(keyOfRestrictions(purpose), types);
}

std::optional<std::string> CMPStorage::restrictions(int purpose) const {
    return store_.get(keyOfRestrictions(purpose));
}

void CMPStorage::write(const TCModel& model, std::string_view text) {
    StoreTransaction transaction(store_);
    setCMP(model.cmpId);
    put(kCmpSdkVersion, std::to_string(model.cmpVersion));
    put(kPolicyVersion, std::to_string(model.tcfPolicyVersion));
    put(kGdprApplies, "1");
    put(kPublisherCC, model.publisherCC);
    put(kPurposeOneTreatment, model.purposeOneTreatment ? "1" : "0");
    put(kUseNonStandardStacks, model.useNonStandardStacks ? "1" : "0");
    setTCString(text);
    put(kVendorConsents, digits(model.vendorConsent));
    put(kVendorLegitimateInterests, digits(model.vendorLegitimateInterest));
    put(kPurposeConsents, digits(model.purposesConsent, kPurposesWidth));
    put(kPurposeLegitimateInterests, digits(model.purposesLITransparency, kPurposesWidth));
    put(kSpecialFeaturesOptIns, digits(model.specialFeatureOptIns, kSpecialFeaturesWidth));
    putPublisher(model.publisherTC);
    transaction.commit();
}

void CMPStorage::putPublisher(const std::optional<PublisherTC>& publisher) {
    const auto bits = [&](IdentifierSet PublisherTC::*set,
                          std::uint32_t count) -> std::optional<std::string> {
        return publisher ? std::optional(digits((*publisher).*set, count)) : std::nullopt;
    };
    const std::uint32_t custom = publisher ? publisher->customPurposes : 0;
    put(kPublisherConsent, bits(&PublisherTC::purposesConsent, kPurposesWidth));
    put(kPublisherLegitimateInterests, bits(&PublisherTC::purposesLITransparency, kPurposesWidth));
    put(kPublisherCustomPurposesConsents, bits(&PublisherTC::customPurposesConsent, custom));
    put(kPublisherCustomPurposesLegitimateInterests,
        bits(&PublisherTC::customPurposesLITransparency, custom));
}

void CMPStorage::reset() {
    StoreTransaction transaction(store_);
    for (std::string_view key :
         {kCmpSdkID, kCmpSdkVersion, kPolicyVersion, kGdprApplies, kPublisherCC,
          kPurposeOneTreatment, kUseNonStandardStacks, kTCString, kVendorConsents,
          kVendorLegitimateInterests, kPurposeConsents, kPurposeLegitimateInterests,
          kSpecialFeaturesOptIns})
        put(key, std::nullopt);
    putPublisher(std::nullopt);
    for (int purpose = 1; purpose <= kGreatestPurpose; ++purpose)
        setRestrictions(purpose, std::nullopt);
    transaction.commit();
}

} // namespace vx::services::tcf
