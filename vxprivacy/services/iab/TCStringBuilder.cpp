// Checks each value against the width of its field, then hands the model to the encoder.

#include "vxprivacy/services/iab/TCStringBuilder.h"

#include <algorithm>
#include <utility>

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/services/iab/Encoder.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::services::tcf {

namespace {

constexpr std::uint64_t greatestIn(unsigned width) {
    return (std::uint64_t{1} << width) - 1;
}

char upperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool isUpperCase(char c) {
    return c >= 'A' && c <= 'Z';
}

// The engine gives the module's version without its points.
constexpr std::uint64_t withoutPoints(std::string_view version) {
    std::uint64_t number = 0;
    for (char c : version)
        if (c != '.')
            number = number * 10 + static_cast<std::uint64_t>(c - '0');
    return number;
}
static_assert(withoutPoints(kVXPrivacyVersion) <= greatestIn(kCmpWidth),
              "CmpVersion cannot hold it");

} // namespace

void TCStringBuilder::leftOut(std::string_view field, const std::string& what) const {
    logger_.log("TC string: " + std::string(field) + " cannot hold " + what + ", left out",
                kLogProblem);
}

std::uint32_t TCStringBuilder::number(std::string_view field, unsigned width,
                                      std::int32_t value) const {
    if (value >= 0 && static_cast<std::uint64_t>(value) <= greatestIn(width))
        return static_cast<std::uint32_t>(value);
    leftOut(field, std::to_string(value));
    return 0;
}

std::uint64_t TCStringBuilder::time(std::string_view field, std::int64_t seconds) const {
    constexpr std::uint64_t kTenths = 10;
    if (seconds >= 0 && static_cast<std::uint64_t>(seconds) <= greatestIn(kTimeWidth) / kTenths)
        return static_cast<std::uint64_t>(seconds) * kTenths;
    leftOut(field, std::to_string(seconds));
    return 0;
}

std::string TCStringBuilder::letters(std::string_view field, std::string_view value) const {
    std::string upper(value);
    std::ranges::transform(upper, upper.begin(), upperCase);
    if (upper.size() == 2 && std::ranges::all_of(upper, isUpperCase))
        return upper;
    leftOut(field, "\"" + std::string(value) + "\"");
    return "AA";
}

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
        leftOut(field, std::to_string(*foreign));
    return set;
}

std::optional<std::uint32_t> TCStringBuilder::maxVendorId(std::string_view field,
                                                          std::int32_t value) const {
    if (value >= 0 && static_cast<std::uint64_t>(value) <= IdentifierSet::kGreatest)
        return static_cast<std::uint32_t>(value);
    leftOut(field, std::to_string(value));
    return {};
}

VendorSection TCStringBuilder::section(std::string_view field,
                                       std::optional<std::uint32_t> maxVendorId,
                                       const IdentifierSet& vendors) const {
    VendorSection section{maxVendorId.value_or(vendors.greatest()), vendors};
    if (section.vendors.truncate(section.maxVendorId))
        leftOut(field, "vendors above " + std::to_string(section.maxVendorId));
    return section;
}

void TCStringBuilder::setVendorListVersion(std::int32_t version) {
    model_.vendorListVersion = number("VendorListVersion", kCmpWidth, version);
}

void TCStringBuilder::setConsentRecordCreated(std::int64_t value) {
    model_.created = time("Created", value);
}

void TCStringBuilder::setConsentRecordLastUpdated(std::int64_t value) {
    model_.lastUpdated = time("LastUpdated", value);
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
    model_.cmpId = number("CmpId", kCmpWidth, cmp);
}

void TCStringBuilder::setIsServiceSpecific(bool serviceSpecific) {
    model_.isServiceSpecific = serviceSpecific;
}

void TCStringBuilder::setTcfPolicyVersion(std::int32_t version) {
    model_.tcfPolicyVersion = number("TcfPolicyVersion", kPolicyVersionWidth, version);
}

void TCStringBuilder::setCmpVersion(std::int32_t version) {
    model_.cmpVersion = number("CmpVersion", kCmpWidth, version);
}

void TCStringBuilder::setConsentLanguage(std::string_view language) {
    model_.consentLanguage = letters("ConsentLanguage", language);
}

void TCStringBuilder::setPublisherCC(std::string_view country) {
    model_.publisherCC = letters("PublisherCC", country);
}

std::string TCStringBuilder::buildConsentString(bool withPublisherTC) {
    TCModel model = model_;
    model.vendorConsent = section("VendorConsent", consent_.greatest, consent_.vendors);
    model.vendorLegitimateInterest = section(
        "VendorLegitimateInterest", legitimateInterest_.greatest, legitimateInterest_.vendors);
    model.publisherRestrictions = rules_.encoded;
    if (!rules_.whole)
        leftOut("PubRestrictions", "some of the publisher's");
    if (withPublisherTC)
        model.publisherTC = PublisherTC{.purposesConsent = model.purposesConsent,
                                        .purposesLITransparency = model.purposesLITransparency};
    std::string text = encode(model);
    built_ = Built{std::move(model), text, rules_.texts};
    return text;
}

void TCStringBuilder::writeTCData() {
    if (built_)
        storage_.write(built_->model, built_->text, built_->restrictions);
}

} // namespace vx::services::tcf
