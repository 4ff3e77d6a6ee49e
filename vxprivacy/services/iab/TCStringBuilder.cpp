// Checks each value against the width of its field, then hands the model to the encoder.

#include "vxprivacy/services/iab/TCStringBuilder.h"

#include <utility>

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/services/iab/Encoder.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::services::tcf {

namespace {

// The engine gives the module's version without its points.
constexpr std::uint64_t withoutPoints(std::string_view version) {
    std::uint64_t number = 0;
    for (char c : version)
        if (c != '.')
            number = number * 10 + static_cast<std::uint64_t>(c - '0');
    return number;
}
static_assert(withoutPoints(kVXPrivacyVersion) < 1u << kCmpWidth, "CmpVersion cannot hold it");

} // namespace

IdentifierSet TCStringBuilder::identifiers(std::string_view field, std::uint32_t greatest,
                                           Identifiers values) const {
    IdentifierSet set;
    std::optional<std::int32_t> foreign;
    for (std::int32_t value : values) {
        if (value >= 1 && static_cast<std::uint32_t>(value) <= greatest)
            set.insert(static_cast<std::uint32_t>(value));
        else if (!foreign)
            foreign = value;
    }
    if (foreign)
        fitter_.leftOut(field, std::to_string(*foreign));
    return set;
}

std::optional<std::uint32_t> TCStringBuilder::maxVendorId(std::string_view field,
                                                          std::int32_t value) const {
    if (value >= 0 && static_cast<std::uint64_t>(value) <= IdentifierSet::kGreatest)
        return static_cast<std::uint32_t>(value);
    fitter_.leftOut(field, std::to_string(value));
    return {};
}

VendorSection TCStringBuilder::section(std::string_view field,
                                       std::optional<std::uint32_t> maxVendorId,
                                       const IdentifierSet& vendors) const {
    VendorSection section{maxVendorId.value_or(vendors.greatest()), vendors};
    if (section.vendors.truncate(section.maxVendorId))
        fitter_.leftOut(field, "vendors above " + std::to_string(section.maxVendorId));
    return section;
}

void TCStringBuilder::setVendorListVersion(std::int32_t version) {
    model_.vendorListVersion = fitter_.number("VendorListVersion", kCmpWidth, version);
}

void TCStringBuilder::setConsentRecordCreated(std::int64_t value) {
    model_.created = fitter_.time("Created", value);
}

void TCStringBuilder::setConsentRecordLastUpdated(std::int64_t value) {
    model_.lastUpdated = fitter_.time("LastUpdated", value);
}

void TCStringBuilder::setVendorConsentSectionMaxVendorId(std::int32_t vendor) {
    consent_.greatest = maxVendorId("VendorConsent.MaxVendorId", vendor);
}

void TCStringBuilder::setVendorLegitimateInterestSectionMaxVendorId(std::int32_t vendor) {
    legitimateInterest_.greatest = maxVendorId("VendorLegitimateInterest.MaxVendorId", vendor);
}

void TCStringBuilder::setPurposesConsent(Identifiers purposes) {
    model_.purposesConsent = identifiers("PurposesConsent", kPurposesWidth, purposes);
}

void TCStringBuilder::setPurposesLITransparency(Identifiers purposes) {
    model_.purposesLITransparency = identifiers("PurposesLITransparency", kPurposesWidth, purposes);
}

void TCStringBuilder::setVendorConsentSectionBitField(Identifiers vendors) {
    consent_.vendors = identifiers("VendorConsent", IdentifierSet::kGreatest, vendors);
}

void TCStringBuilder::setVendorLegitimateInterestSectionBitField(Identifiers vendors) {
    legitimateInterest_.vendors =
        identifiers("VendorLegitimateInterest", IdentifierSet::kGreatest, vendors);
}

void TCStringBuilder::setSpecialFeatureOptInts(Identifiers features) {
    model_.specialFeatureOptIns =
        identifiers("SpecialFeatureOptIns", kSpecialFeaturesWidth, features);
}

void TCStringBuilder::setCmpID(std::int32_t cmp) {
    model_.cmpId = fitter_.number("CmpId", kCmpWidth, cmp);
}

void TCStringBuilder::setIsServiceSpecific(bool serviceSpecific) {
    model_.isServiceSpecific = serviceSpecific;
}

void TCStringBuilder::setTcfPolicyVersion(std::int32_t version) {
    model_.tcfPolicyVersion = fitter_.number("TcfPolicyVersion", kPolicyVersionWidth, version);
}

void TCStringBuilder::setCmpVersion(std::int32_t version) {
    model_.cmpVersion = fitter_.number("CmpVersion", kCmpWidth, version);
}

void TCStringBuilder::setConsentLanguage(std::string_view language) {
    model_.consentLanguage = fitter_.letters("ConsentLanguage", language);
}

void TCStringBuilder::setPublisherCC(std::string_view country) {
    model_.publisherCC = fitter_.letters("PublisherCC", country);
}

std::string TCStringBuilder::buildConsentString(bool withPublisherTC) {
    TCModel model = model_;
    model.vendorConsent = section("VendorConsent", consent_.greatest, consent_.vendors);
    model.vendorLegitimateInterest = section(
        "VendorLegitimateInterest", legitimateInterest_.greatest, legitimateInterest_.vendors);
    model.publisherRestrictions = rules_.encoded;
    if (!rules_.whole)
        fitter_.leftOut("PubRestrictions", "some of the publisher's");
    if (withPublisherTC)
        model.publisherTC = PublisherTC{.purposesConsent = model.purposesConsent,
                                        .purposesLITransparency = model.purposesLITransparency};
    std::string text = encode(model);
    built_ = TCData{.model = std::move(model),
                    .text = text,
                    .restrictions = rules_.texts,
                    .additionalConsent = additionalConsent_};
    return text;
}

void TCStringBuilder::writeTCData() {
    if (built_)
        storage_.write(*built_);
}

} // namespace vx::services::tcf
