#include <gtest/gtest.h>

#include "tests/iab/IABApplication.h"
#include "vxprivacy/services/iab/InAppTCData.h"
#include "vxprivacy/testing/RecordingDoors.h"

namespace {

using vx::tests::IABApplication;
using vx::tests::save;

// Under "IABTCF_..." what an application finds after a save; the TC string is not looked at.
void expectStored(const IABApplication& application, const vx::recording::Texts& expected) {
    for (const auto& [key, value] : expected)
        EXPECT_EQ(application.stored(key), value) << key;
    EXPECT_EQ(application.store.entries().size(), expected.size() + 1);
}

const vx::recording::Texts kSaved = {
    {"CmpSdkID", "90"},
    {"CmpSdkVersion", "471"},
    {"PolicyVersion", "2"},
    {"gdprApplies", "1"},
    {"PublisherCC", "DE"},
    {"PurposeOneTreatment", "0"},
    {"UseNonStandardStacks", "0"},
    {"UseNonStandardTexts", "0"},
    {"VendorConsents", "100000000001"},
    {"VendorLegitimateInterests", "000000000000"},
    {"PurposeConsents", "101000000000000000000000"},
    {"PurposeLegitimateInterests", "010000000000000000000000"},
    {"SpecialFeaturesOptIns", "010000000000"},
};

} // namespace

TEST(CMPStorage, HoldsWhatWasBuilt) {
    IABApplication application;
    save(application, false);
    expectStored(application, kSaved);
}

TEST(CMPStorage, HoldsThePublisherSegmentWhileThereIsOne) {
    IABApplication application;
    save(application, true);
    vx::recording::Texts expected = kSaved;
    expected["PublisherConsent"] = kSaved.at("PurposeConsents");
    expected["PublisherLegitimateInterests"] = kSaved.at("PurposeLegitimateInterests");
    expected["PublisherCustomPurposesConsents"] = "";
    expected["PublisherCustomPurposesLegitimateInterests"] = "";
    expectStored(application, expected);
    save(application, false);
    expectStored(application, kSaved);
}

TEST(CMPStorage, WritesNothingThatWasNotBuilt) {
    IABApplication application;
    application.builder()->writeTCData();
    EXPECT_TRUE(application.store.entries().empty());
}

TEST(CMPStorage, ForgetsEverythingAndNothingElse) {
    IABApplication application(vx::recording::Texts{{"other", "kept"}});
    application.library.setCMPSDKID();
    application.library.setPublisherRestrictions({{"1", "0"}, {"63", "2"}});
    save(application, true);
    application.library.resetTCData();
    EXPECT_EQ(application.store.entries(), (vx::recording::Texts{{"other", "kept"}}));
}

TEST(CMPStorage, TellsTheCreatedDateOfItsOwnStringOnly) {
    IABApplication application;
    EXPECT_EQ(application.library.getCreatedDate(), "");
    save(application, false);
    EXPECT_EQ(application.library.getCreatedDate(), "1600000000");
    const std::string whole = application.stored("TCString");
    EXPECT_TRUE(application.lines.empty());

    const auto foreign = application.builder();
    foreign->setCmpID(31);
    for (const std::string& text :
         {whole.substr(0, 30), std::string("\xFF"), foreign->buildConsentString(false)}) {
        SCOPED_TRACE(text);
        application.lines.clear();
        application.library.saveConsentString(text);
        EXPECT_EQ(application.library.getCreatedDate(), "");
        EXPECT_EQ(application.lines.size(), 1u);
    }
    application.lines.clear();
    application.library.saveConsentString("");
    EXPECT_EQ(application.stored("TCString"), "absent");
    EXPECT_EQ(application.library.getCreatedDate(), "");
    EXPECT_TRUE(application.lines.empty());
}

// In either profile: for the next save, and gone with the one after, or a reset.
TEST(AdditionalConsent, IsWrittenWithTheSaveItWasGivenFor) {
    for (const auto profile :
         {vx::services::TCFProfile::Specified, vx::services::TCFProfile::InForce}) {
        IABApplication application({}, {.profile = profile, .vendorList = [] {
                                            return vx::JSONValue::parse(
                                                R"({"gvlSpecificationVersion": 3,
                         "vendorListVersion": 17, "tcfPolicyVersion": 4})");
                                        }});
        const auto savedAfter = [&](std::vector<std::int32_t> accepted,
                                    std::vector<std::int32_t> disclosed) {
            application.library.setAdditionalConsent(accepted, disclosed);
            save(application, false);
            return application.stored("AddtlConsent");
        };
        EXPECT_EQ(savedAfter({35, 1, 35}, {21, 9, 35}), "2~1.35~dv.9.21");
        EXPECT_EQ(savedAfter({}, {9, 0, -1}), "2~~dv.9");
        EXPECT_EQ(savedAfter({7}, {}), "2~7~dv.");
        save(application, false);
        EXPECT_EQ(application.stored("AddtlConsent"), "absent");
        EXPECT_EQ(savedAfter({7}, {}), "2~7~dv.");
        application.library.resetTCData();
        EXPECT_EQ(application.stored("AddtlConsent"), "absent");
    }
}

TEST(Expiry, RemovesAtStartUpWhereAnApplicationAsksForIt) {
    constexpr std::uint64_t kSavedAt = 1'700'000'000'000;
    struct Case {
        std::uint64_t now;
        bool clears;
        bool left;
    };
    for (const auto& [now, clears, left] :
         std::vector<Case>{{kSavedAt + 34'128'000'000, true, true},
                           {kSavedAt + 34'128'000'001, true, false},
                           {kSavedAt - 1, true, false},
                           {kSavedAt * 2, false, true}}) {
        const vx::recording::StandingClock clock(now);
        vx::services::TCFLibrary::Settings settings;
        settings.expiryClock = clears ? &clock : nullptr;
        IABApplication application({{"TIMESTAMP", std::to_string(kSavedAt)}}, settings);
        save(application, false);
        application.library.setCMPSDKID();
        EXPECT_EQ(application.stored("TCString") != "absent", left);
        EXPECT_EQ(application.stored("CmpSdkID"), "90");
        EXPECT_EQ(application.store.get("TIMESTAMP"), std::to_string(kSavedAt));
    }
}

TEST(InAppTCData, IsReadFromTheStringAndFromNothingDamaged) {
    IABApplication application;
    save(application, true);
    const std::string consents = "\"consents\":\"" + application.stored("PurposeConsents");
    const std::string interests = "\",\"legitimateInterests\":\"";
    const std::string purposes =
        consents + interests + application.stored("PurposeLegitimateInterests") + "\"";
    application.store.set("IABTCF_VendorConsents", "111"); // the string has the say
    const std::string string = application.stored("TCString");
    EXPECT_EQ(vx::services::inAppTCData(application.store),
              R"({"cmpId":90,"gdprApplies":1,"tcString":")" + string +
                  R"(","tcfPolicyVersion":2,"cmpVersion":471,"gvlVersion":0,"isServiceSpecific":0,)"
                  R"("useNonStandardTexts":0,"publisherCC":"DE","purposeOneTreatment":0,)"
                  R"("purpose":{)" +
                  purposes + R"(},"vendor":{"consents":"100000000001)" + interests +
                  R"(000000000000"},"specialFeatureOptins":"010000000000","publisher":{)" +
                  purposes + R"(,"customPurpose":{"consents":")" + interests +
                  R"("},"restrictions":{}}})");

    const auto dataOf = [](const vx::recording::Texts& entries) {
        return vx::services::inAppTCData(vx::recording::MemoryStore(entries));
    };
    EXPECT_EQ(dataOf({{"IABTCF_CmpSdkID", "300"},
                      {"IABTCF_gdprApplies", "0"},
                      {"IABTCF_AddtlConsent", "2~1.35~dv.9"}}),
              R"({"cmpId":300,"gdprApplies":0,"addtlConsent":"2~1.35~dv.9"})");
    for (const char* number : {"-1", "4096", "99999999999999999999", "x", ""})
        EXPECT_EQ(dataOf({{"IABTCF_CmpSdkID", number},
                          {"IABTCF_gdprApplies", number},
                          {"IABTCF_PolicyVersion", number},
                          {"IABTCF_TCString", string.substr(0, 30) + "\"</script>\xFF"},
                          {"IABTCF_AddtlConsent", "2~1\"}"}}),
                  "{}");
}
