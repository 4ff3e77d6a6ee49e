// The contents of the TC string: takes the accepted entries of a save apart and fills the IAB
// library's builder with them.

#include "vxprivacy/engine/TCStringContents.h"

#include <algorithm>

#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXVariables.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/iab/VXCMPStorage.h"

namespace vx {

namespace {

using Numbers = std::vector<std::int32_t>;

constexpr std::int32_t kPolicyVersion = 2;
constexpr std::string_view kDefaultLanguage = "en";

// What the accepted entries of a consent dictionary stand for, in its order.
struct Accepted {
    Numbers purposesWithConsent;
    Numbers purposesWithLegitimateInterest;
    Numbers vendorsWithConsent;
    Numbers vendorsWithLegitimateInterest;
    Numbers specialFeatures;
};

// How far the number of `key` lies above `offset`; it wraps where the key was never ours.
std::int32_t numberAbove(std::int32_t offset, std::string_view key, std::string_view prefix) {
    const std::int32_t number = integerValue(removingAll(key, prefix));
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number) -
                                     static_cast<std::uint32_t>(offset));
}

// The item whose number lies `above` its offset: consent has the odd one of its two numbers.
std::int32_t item(std::int32_t above) {
    return static_cast<std::int32_t>((std::int64_t{above} + (above % 2 != 0)) / 2);
}

void addPurpose(std::int32_t above, Accepted& accepted) {
    if (above % 2 == 0) {
        if (above != 2) // purpose 1 knows no legitimate interest
            accepted.purposesWithLegitimateInterest.push_back(item(above));
        return;
    }
    accepted.purposesWithConsent.push_back(item(above));
    if (above != 1) // every purpose but the first is entered twice, deliberately
        accepted.purposesWithConsent.push_back(item(above));
}

// All category entries are purposes: in IAB mode there are no categories of the configuration.
Accepted decoded(const ConsentDictionary& consent) {
    Accepted accepted;
    for (const auto& [key, value] : consent) {
        if (value != kConsentAccepted)
            continue;
        if (key.starts_with(kVXVendorPrefix)) {
            const std::int32_t above = numberAbove(kVXVendorOffset, key, kVXVendorPrefix);
            Numbers& vendors = above % 2 == 0 ? accepted.vendorsWithLegitimateInterest
                                              : accepted.vendorsWithConsent;
            vendors.push_back(item(above));
        } else if (key.starts_with(kVXCategoryPrefix)) {
            addPurpose(numberAbove(kVXPurposeOffset, key, kVXCategoryPrefix), accepted);
        } else if (key.starts_with(kVXFeaturePrefix)) {
            accepted.specialFeatures.push_back(
                numberAbove(kVXSpeFeatureOffset, key, kVXFeaturePrefix) / 2);
        }
    }
    return accepted;
}

std::int32_t highest(const Accepted& accepted) {
    std::int32_t vendor = 0;
    for (const Numbers& vendors :
         {accepted.vendorsWithConsent, accepted.vendorsWithLegitimateInterest})
        for (std::int32_t each : vendors)
            vendor = std::max(vendor, each);
    return vendor;
}

std::int64_t createdOr(std::int64_t now) {
    const std::string created = VXCMPStorage::getCreatedDate();
    return created.empty() ? now : longIntegerValue(created);
}

void setChoices(const Accepted& accepted, std::int32_t maxVendorID, CoreStringBuilder& builder) {
    builder.setVendorConsentSectionMaxVendorId(maxVendorID);
    builder.setVendorLegitimateInterestSectionMaxVendorId(maxVendorID);
    builder.setPurposesConsent(accepted.purposesWithConsent);
    builder.setPurposesLITransparency(accepted.purposesWithLegitimateInterest);
    builder.setVendorConsentSectionBitField(accepted.vendorsWithConsent);
    // The vendors with consent, not those with legitimate interest, deliberately.
    builder.setVendorLegitimateInterestSectionBitField(accepted.vendorsWithConsent);
    builder.setSpecialFeatureOptInts(accepted.specialFeatures);
}

// The publisher's country repeats the language, deliberately.
void setLanguageAndCountry(std::string_view code, CoreStringBuilder& builder) {
    builder.setConsentLanguage(code);
    builder.setPublisherCC(code);
}

void setIdentity(CoreStringBuilder& builder) {
    builder.setCmpID(kCMPID);
    builder.setIsServiceSpecific(true);
    builder.setTcfPolicyVersion(kPolicyVersion);
    builder.setCmpVersion(integerValue(removingAll(kVXPrivacyVersion, ".")));
    setLanguageAndCountry(kDefaultLanguage, builder);
}

} // namespace

void saveConsentStringV2(const ConsentDictionary& consent, EngineState& state) {
    if (!VXCMPStorage::present())
        return;
    ++state.tcDataChanges;
    const auto builder = platform().iab->makeCoreStringBuilder();
    const auto list = configurationFile(kVXVendorListConfiguration);
    const std::int32_t version = list ? list->version() : 0;
    const auto now = static_cast<std::int64_t>(VXPredefinedVariables::sharedInstance().now());
    builder->setVendorListVersion(version != 0 ? version : state.vendorListVersion);
    builder->setConsentRecordCreated(createdOr(now)); // the first save's time, kept by later ones
    builder->setConsentRecordLastUpdated(now);
    const Accepted accepted = decoded(consent);
    state.maxVendorID = highest(accepted);
    setChoices(accepted, state.maxVendorID, *builder);
    setIdentity(*builder);
    if (state.languageCode)
        setLanguageAndCountry(*state.languageCode, *builder);
    builder->setChoice(consent);
    builder->buildConsentString(state.generatePublisherTC);
    builder->writeTCData();
}

} // namespace vx
