#include <functional>

#include <gtest/gtest.h>

#include "tests/iab/IABApplication.h"
#include "vxprivacy/services/iab/Decoder.h"

namespace {

using namespace vx;
using namespace vx::services::tcf;
using tests::IABApplication;

TCModel modelOf(CoreStringBuilder& builder) {
    return std::get<TCModel>(decode(builder.buildConsentString(false)));
}

} // namespace

TEST(Builder, LeavesOutWhatAFieldCannotHold) {
    struct Case {
        std::function<void(CoreStringBuilder&)> give;
        std::string logged;
        std::function<bool(const TCModel&)> holds;
    };
    const std::vector<Case> cases = {
        {[](auto& b) { b.setVendorListVersion(4096); }, "VendorListVersion cannot hold 4096",
         [](auto& m) { return m.vendorListVersion == 0; }},
        {[](auto& b) { b.setVendorListVersion(4095); }, "",
         [](auto& m) { return m.vendorListVersion == 4095; }},
        {[](auto& b) { b.setCmpVersion(-1); }, "CmpVersion cannot hold -1",
         [](auto& m) { return m.cmpVersion == 0; }},
        {[](auto& b) { b.setTcfPolicyVersion(64); }, "TcfPolicyVersion cannot hold 64",
         [](auto& m) { return m.tcfPolicyVersion == 0; }},
        {[](auto& b) { b.setConsentRecordCreated(6'871'947'673); }, "",
         [](auto& m) { return m.created == 68'719'476'730; }},
        {[](auto& b) { b.setConsentRecordCreated(6'871'947'674); },
         "Created cannot hold 6871947674", [](auto& m) { return m.created == 0; }},
        {[](auto& b) { b.setConsentRecordLastUpdated(-1); }, "LastUpdated cannot hold -1",
         [](auto& m) { return m.lastUpdated == 0; }},
        {[](auto& b) { b.setConsentLanguage("pt-BR"); }, "ConsentLanguage cannot hold \"pt-BR\"",
         [](auto& m) { return m.consentLanguage == "AA"; }},
        {[](auto& b) { b.setPublisherCC("\xC3\xA9"); }, // an e with an accent
         "PublisherCC cannot hold", [](auto& m) { return m.publisherCC == "AA"; }},
        {[](auto& b) {
             b.setPurposesConsent(std::vector{0, 24, 24, 25, -7});
         },
         "PurposesConsent cannot hold 0",
         [](auto& m) { return m.purposesConsent == IdentifierSet{24}; }},
        {[](auto& b) {
             b.setSpecialFeatureOptInts(std::vector{12, 13});
         },
         "SpecialFeatureOptIns cannot hold 13",
         [](auto& m) { return m.specialFeatureOptIns == IdentifierSet{12}; }},
        {[](auto& b) {
             b.setVendorConsentSectionBitField(std::vector{12, 3, 13, 2147483647});
         },
         "VendorConsent cannot hold 2147483647",
         [](auto& m) {
             return m.vendorConsent == VendorSection{12, {3, 12}};
         }},
        {[](auto& b) {
             b.setVendorLegitimateInterestSectionBitField(std::vector{12, 13});
         },
         "VendorLegitimateInterest cannot hold vendors above 12",
         [](auto& m) {
             return m.vendorLegitimateInterest == VendorSection{12, {12}};
         }},
        {[](auto& b) {
             b.setVendorConsentSectionMaxVendorId(65536);
             b.setVendorConsentSectionBitField(std::vector{7, 65535, 65536});
         },
         "VendorConsent.MaxVendorId cannot hold 65536",
         [](auto& m) {
             return m.vendorConsent == VendorSection{65535, {7, 65535}};
         }},
    };
    for (const auto& [give, logged, holds] : cases) {
        SCOPED_TRACE(logged);
        IABApplication application;
        const auto builder = application.builder();
        give(*builder);
        EXPECT_TRUE(holds(modelOf(*builder)));
        const std::string first = application.lines.empty() ? "" : application.lines.front();
        EXPECT_EQ(first.substr(0, first.find(logged) + logged.size()),
                  logged.empty() ? "" : "4 TC string: " + logged);
    }
}

TEST(Builder, LogsOnceWhatManyIdentifiersHaveInCommon) {
    IABApplication application;
    const auto builder = application.builder();
    builder->setPurposesConsent(std::vector{-1, -2, 25, 26});
    EXPECT_EQ(application.lines.size(), 1u);
}

TEST(Builder, KeepsATimeAndUpperCaseLetters) {
    IABApplication application;
    const auto builder = application.builder();
    builder->setConsentRecordCreated(1'600'000'000);
    const TCModel model = modelOf(*builder);
    EXPECT_EQ(model.created, 16'000'000'000u);
    EXPECT_EQ(model.consentLanguage + model.publisherCC, "DEDE");
}

TEST(Builder, GivesThePublisherSegmentTheUsersPurposes) {
    IABApplication application;
    const auto builder = application.builder();
    builder->setPurposesConsent(std::vector{1, 2, 2});
    builder->setPurposesLITransparency(std::vector{9});
    const auto with = std::get<TCModel>(decode(builder->buildConsentString(true)));
    EXPECT_EQ(with.publisherTC,
              (PublisherTC{.purposesConsent = {1, 2}, .purposesLITransparency = {9}}));
    EXPECT_EQ(modelOf(*builder).publisherTC, std::nullopt);
}
