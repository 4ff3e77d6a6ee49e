#pragma once

#include <cstdint>
#include <string_view>

#include "vxprivacy/services/iab/TCModel.h"

namespace vx::services::tcf {

/// What the segments begin with, but for the core segment, which begins with the version.
enum class SegmentType : std::uint8_t { DisclosedVendors = 1, AllowedVendors = 2, PublisherTC = 3 };

inline constexpr std::uint32_t kVersion = 2;

// Widths in bits.
inline constexpr unsigned kVersionWidth = 6;
inline constexpr unsigned kSegmentTypeWidth = 3;
inline constexpr unsigned kTimeWidth = 36;
inline constexpr unsigned kLetterWidth = 6;
inline constexpr unsigned kCmpWidth = 12; ///< also of the vendor list's version
inline constexpr unsigned kPolicyVersionWidth = 6;
inline constexpr unsigned kPurposesWidth = 24;
inline constexpr unsigned kSpecialFeaturesWidth = 12;
inline constexpr unsigned kVendorWidth = 16;
inline constexpr unsigned kEntriesWidth = 12;
inline constexpr unsigned kPurposeWidth = 6;
inline constexpr unsigned kRestrictionTypeWidth = 2;

// The fields of each segment in the order of their bits. They are visited by whatever writes or
// reads them, bits or another form; `Model` may be const.

template <class Visitor, class Model>
void visitCore(Visitor& visit, Model& model) {
    visit.time("Created", model.created);
    visit.time("LastUpdated", model.lastUpdated);
    visit.number("CmpId", kCmpWidth, model.cmpId);
    visit.number("CmpVersion", kCmpWidth, model.cmpVersion);
    visit.number("ConsentScreen", 6, model.consentScreen);
    visit.letters("ConsentLanguage", model.consentLanguage);
    visit.number("VendorListVersion", kCmpWidth, model.vendorListVersion);
    visit.number("TcfPolicyVersion", kPolicyVersionWidth, model.tcfPolicyVersion);
    visit.flag("IsServiceSpecific", model.isServiceSpecific);
    visit.flag("UseNonStandardStacks", model.useNonStandardStacks);
    visit.identifiers("SpecialFeatureOptIns", kSpecialFeaturesWidth, model.specialFeatureOptIns);
    visit.identifiers("PurposesConsent", kPurposesWidth, model.purposesConsent);
    visit.identifiers("PurposesLITransparency", kPurposesWidth, model.purposesLITransparency);
    visit.flag("PurposeOneTreatment", model.purposeOneTreatment);
    visit.letters("PublisherCC", model.publisherCC);
    visit.vendors("VendorConsent", model.vendorConsent);
    visit.vendors("VendorLegitimateInterest", model.vendorLegitimateInterest);
    visit.restrictions("PubRestrictions", model.publisherRestrictions);
}

template <class Visitor, class Model>
void visitPublisherTC(Visitor& visit, Model& model) {
    visit.identifiers("PubPurposesConsent", kPurposesWidth, model.purposesConsent);
    visit.identifiers("PubPurposesLITransparency", kPurposesWidth, model.purposesLITransparency);
    visit.number("NumCustomPurposes", kPurposeWidth, model.customPurposes);
    visit.identifiers("CustomPurposesConsent", model.customPurposes, model.customPurposesConsent);
    visit.identifiers("CustomPurposesLITransparency", model.customPurposes,
                      model.customPurposesLITransparency);
}

} // namespace vx::services::tcf
