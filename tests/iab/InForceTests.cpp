#include <algorithm>

#include <gtest/gtest.h>

#include "tests/iab/IABApplication.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXVendorContentView.h"
#include "vxprivacy/iab_center/VendorRecord.h"
#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/ui/Touch.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/testing/DocumentTexts.h"
#include "vxprivacy/testing/RecordingDoors.h"

// The profile of the framework in force, from a consent dictionary to the string and the keys.

namespace {

using namespace vx;
using namespace vx::services::tcf;
using services::TCFLibrary;
using services::TCFProfile;

constexpr std::string_view kList = R"({
    "gvlSpecificationVersion": 3, "vendorListVersion": 17, "tcfPolicyVersion": 4,
    "purposes": {"1": {"id": 1}, "2": {"id": 2}, "3": {"id": 3}, "7": {"id": 7}},
    "specialFeatures": {"1": {"id": 1}},
    "vendors": {
        "1": {"id": 1, "name": "Both", "purposes": [1, 3], "legIntPurposes": [2, 7],
              "flexiblePurposes": [2, 3, 7], "specialPurposes": []},
        "2": {"id": 2, "name": "Special", "purposes": [], "legIntPurposes": [],
              "specialPurposes": [1]},
        "3": {"id": 3, "name": "Consent and special", "purposes": [1], "specialPurposes": [2]},
        "4": {"id": 4, "name": "Interest", "legIntPurposes": [7], "flexiblePurposes": [7]},
        "5": {"id": 5, "name": "Rigid", "purposes": [7], "legIntPurposes": [2]},
        "6": {"id": 6, "name": "Deleted", "purposes": [1], "legIntPurposes": [2],
              "specialPurposes": [1], "deletedDate": "2024-01-31T00:00:00Z"},
        "06": {"id": 6, "name": "Again", "purposes": [1], "specialPurposes": [1]}}})";

TCFLibrary::Settings inForce() {
    return {.profile = TCFProfile::InForce,
            .publisherCountry = "FR",
            .cmpID = 300,
            .cmpVersion = 7,
            .vendorList = [] { return JSONValue::parse(kList); }};
}

std::string key(std::string_view prefix, std::int32_t number) {
    return std::string(prefix) + std::to_string(number);
}

// All items, accepted or refused: purposes 1 to 11, vendors 1 to 7, special features 1 and 2.
ConsentDictionary everything(const std::string& value) {
    ConsentDictionary consent;
    for (std::int32_t n = 1; n <= 22; ++n)
        consent.set(key("PRIVACY_CAT_", 10000 + n), value);
    for (std::int32_t n = 1; n <= 14; ++n)
        consent.set(key("PRIVACY_VEN_", 1000 + n), value);
    for (std::int32_t n = 2; n <= 4; n += 2)
        consent.set(key("PRIVACY_FEAT_", 13000 + n), value);
    return consent;
}

constexpr std::int32_t kAll[] = {1, 2, 3, 4, 5, 6, 7};

TCModel saved(tests::IABApplication& application, const ConsentDictionary& consent,
              CoreStringBuilder::Identifiers disclosed = kAll) {
    application.library.setDisclosedVendors(disclosed);
    const auto builder = application.builder(); // with other fields than the profile's
    builder->setConsentRecordCreated(1'600'000'000);
    builder->setConsentRecordLastUpdated(1'700'000'001);
    builder->setChoice(consent);
    const auto decoded = decode(builder->buildConsentString(false));
    builder->writeTCData();
    const auto* model = std::get_if<TCModel>(&decoded);
    return model ? *model : TCModel{};
}

} // namespace

TEST(InForce, TakesEachFieldFromItsSource) {
    tests::IABApplication application({}, inForce());
    const TCModel model = saved(application, everything("1"));
    EXPECT_EQ(model.created, 16'999'200'000u) << "14 November 2023, and no hour of it";
    EXPECT_EQ(model.lastUpdated, model.created);
    EXPECT_EQ(model.cmpId, 300u);
    EXPECT_EQ(model.cmpVersion, 7u);
    EXPECT_EQ(model.vendorListVersion, 17u);
    EXPECT_EQ(model.tcfPolicyVersion, 4u);
    EXPECT_TRUE(model.isServiceSpecific);
    EXPECT_EQ(model.consentLanguage + model.publisherCC, "DEFR");
    EXPECT_EQ(model.purposesConsent, (IdentifierSet{1, 2, 3, 7}));
    EXPECT_EQ(model.purposesLITransparency, (IdentifierSet{2, 7}));
    EXPECT_EQ(model.specialFeatureOptIns, IdentifierSet{1});
    EXPECT_EQ(model.vendorConsent, (VendorSection{5, {1, 3, 5}}));
    EXPECT_EQ(model.vendorLegitimateInterest, (VendorSection{5, {1, 2, 3, 4, 5}}));
    EXPECT_EQ(model.disclosedVendors, (VendorSection{5, {1, 2, 3, 4, 5}}));
    EXPECT_EQ(application.stored("DisclosedVendors"), "11111");
    EXPECT_EQ(application.stored("PolicyVersion"), "4");
    EXPECT_EQ(application.stored("gdprApplies"), "1");
    EXPECT_EQ(application.stored("UseNonStandardTexts"), "0");
    EXPECT_EQ(application.stored("UseNonStandardStacks"), "absent");
    EXPECT_EQ(application.library.getCreatedDate(), "1699920000");
}

TEST(InForce, KnowsCountries) {
    const std::pair<std::string, std::string> cases[] = {{"fr", "FR"},  {"ZZ", "AA"}, {"", "AA"},
                                                         {"FRA", "AA"}, {"F ", "AA"}, {"AA", "AA"}};
    for (const auto& [country, written] : cases) {
        TCFLibrary::Settings settings = inForce();
        settings.publisherCountry = country;
        tests::IABApplication application({}, settings);
        EXPECT_EQ(saved(application, everything("1")).publisherCC, written) << country;
        EXPECT_EQ(application.stored("PublisherCC"), written);
        EXPECT_EQ(application.lines.size(), written == "FR" ? 0u : 1u) << country;
    }
}

TEST(InForce, KnowsAnObjectionFromALegitimateInterestThatLeavesNoChoice) {
    tests::IABApplication application({}, inForce());
    const TCModel refused = saved(application, everything("0"));
    EXPECT_EQ(refused.vendorLegitimateInterest.vendors, IdentifierSet{2});
    EXPECT_EQ(refused.disclosedVendors->vendors, (IdentifierSet{1, 2, 3, 4, 5}));
    // The even entry counts, without one the odd one, without both there was no objection.
    const TCModel mixed = saved(application, {{"PRIVACY_CAT_10001", "1"},
                                              {"PRIVACY_VEN_1001", "0"},
                                              {"PRIVACY_VEN_1002", "1"},
                                              {"PRIVACY_VEN_1005", "0"},
                                              {"PRIVACY_VEN_1009", "1"},
                                              {"PRIVACY_VEN_1010", "0"},
                                              {"PRIVACY_VEN_x", "1"},
                                              {"PRIVACY_VEN_999", "1"},
                                              {"PRIVACY_VEN_99999999999", "1"}});
    EXPECT_EQ(mixed.vendorLegitimateInterest.vendors, (IdentifierSet{1, 2, 4}));
    EXPECT_EQ(mixed.vendorConsent.vendors, IdentifierSet{5});
}

TEST(InForce, HasAnEmptySegmentWhereNobodyWasShown) {
    tests::IABApplication application({}, inForce());
    saved(application, everything("1"));
    const TCModel model = saved(application, everything("1"), {});
    EXPECT_EQ(model.disclosedVendors, VendorSection{});
    EXPECT_EQ(model.vendorLegitimateInterest, VendorSection{});
    EXPECT_TRUE(application.stored("TCString").ends_with(".IAAA"));
    EXPECT_EQ(application.stored("DisclosedVendors"), "");
    // Vendors without any purpose: nobody can do anything with that.
    EXPECT_EQ(saved(application, {{"PRIVACY_VEN_1001", "1"}}).vendorConsent, VendorSection{});
}

TEST(InForce, FollowsThePublishersRestrictions) {
    struct Case {
        ExplicitRestrictions restrictions;
        IdentifierSet consent;
        IdentifierSet interest; // of vendors 1, 4 and 5
    };
    const std::vector<Case> cases = {
        {{{"2", {{"5", "0"}}}, {"7", {{"4", "0"}}}}, {1, 5}, {1}},
        {{{"7", {{"4", "1"}}}}, {1, 4, 5}, {1, 5}},                      // flexible
        {{{"2", {{"5", "1"}}}, {"7", {{"5", "2"}}}}, {1}, {1, 4}},       // not flexible
        {{{"1", {{"1", "0"}}}, {"3", {{"1", "2"}}}}, {5}, {1, 4, 5}},    // never 3 by interest
        {{{"2", {{"1", "2"}}}, {"9", {{"1", "0"}}}}, {1, 5}, {1, 4, 5}}, // nothing new
    };
    for (const auto& [restrictions, consent, interest] : cases) {
        tests::IABApplication application({}, inForce());
        application.library.setExplicitRestrictions(restrictions);
        constexpr std::int32_t shown[] = {1, 4, 5};
        ConsentDictionary consented = everything("1");
        consented.set("PRIVACY_VEN_1005", "0");
        const TCModel model = saved(application, consented, shown);
        EXPECT_EQ(model.vendorConsent.vendors, consent);
        EXPECT_EQ(model.vendorLegitimateInterest.vendors, interest);
    }
    tests::IABApplication application({}, inForce());
    application.library.setExplicitRestrictions({{"3", {{"1", "2"}, {"3", "1"}, {"6", "0"}}}});
    EXPECT_EQ(saved(application, everything("1")).publisherRestrictions,
              (Restrictions{{{3, Restriction::NotAllowed}, {1}},
                            {{3, Restriction::RequireConsent}, {3}}}));
    EXPECT_EQ(application.stored("PublisherRestrictions3"), "0_1");
}

TEST(InForce, WritesNoStringWithoutAListAndACMP) {
    struct Case {
        std::string_view list;
        std::int32_t cmp;
        std::string why;
    };
    const std::string noList = "there is no vendor list of format 3 and policy version 4 or more";
    const std::vector<Case> cases = {
        {"{}", 300, noList},
        {R"({"gvlSpecificationVersion":2,"vendorListVersion":224,"tcfPolicyVersion":4})", 300,
         noList},
        {R"({"gvlSpecificationVersion":3,"vendorListVersion":17,"tcfPolicyVersion":3})", 300,
         noList},
        {R"({"gvlSpecificationVersion":3,"vendorListVersion":4096,"tcfPolicyVersion":4})", 300,
         noList},
        {kList, 1, "the CMP ID 1 is not from 2 to 4095"},
        {kList, 4096, "the CMP ID 4096 is not from 2 to 4095"},
    };
    tests::IABApplication earlier({}, inForce());
    saved(earlier, everything("1"));
    for (const auto& [list, cmp, why] : cases) {
        SCOPED_TRACE(why);
        TCFLibrary::Settings settings = inForce();
        settings.cmpID = cmp;
        settings.vendorList = [list] { return JSONValue::parse(list); };
        tests::IABApplication application(earlier.store.entries(), settings);
        saved(application, everything("1"));
        EXPECT_EQ(application.lines, std::vector{"4 TC string: none is written: " + why});
        recording::Texts left = {{"IABTCF_gdprApplies", "1"}};
        if (cmp == 300)
            left.emplace("IABTCF_CmpSdkID", "300");
        EXPECT_EQ(application.store.entries(), left);
    }
}

TEST(InForce, SaysAtStartWhetherTheLawApplies) {
    for (const std::optional<bool> applies : {std::optional(true), std::optional(false), {}}) {
        TCFLibrary::Settings settings = inForce();
        settings.gdprApplies = applies;
        tests::IABApplication application({{"IABTCF_gdprApplies", "before"}}, settings);
        application.library.setCMPSDKID();
        const std::string expected = applies ? std::to_string(*applies) : "absent";
        EXPECT_EQ(application.stored("gdprApplies"), expected);
        EXPECT_EQ(application.stored("CmpSdkID"), "300");
        saved(application, everything("1"));
        EXPECT_EQ(application.stored("gdprApplies"), expected);
        application.library.resetTCData();
        EXPECT_EQ(application.stored("gdprApplies"), expected) << "an SDK may take none for no";
        EXPECT_EQ(application.stored("TCString"), "absent");
    }
}

TEST(InForce, GivesWayToTheSpecifiedProfile) {
    tests::IABApplication before({}, inForce());
    saved(before, everything("1"));
    tests::IABApplication application(before.store.entries());
    tests::IABApplication fresh;
    save(application, false);
    save(fresh, false);
    EXPECT_EQ(application.store.entries(), fresh.store.entries());
}

namespace {

// A process in IAB mode with the profile; the library takes the vendor list from the engine.
struct Process {
    explicit Process(recording::Texts files, TCFProfile profile = TCFProfile::InForce)
        : application({}, settings(profile)), documents(std::move(files)) {
        VXMobilePrivacy::sharedInstance().setSiteID(12, 5);
    }
    static TCFLibrary::Settings settings(TCFProfile profile) {
        TCFLibrary::Settings settings = inForce();
        settings.profile = profile;
        settings.vendorList = {};
        return settings;
    }
    TCModel stored() const {
        const auto decoded = decode(application.stored("TCString"));
        const auto* model = std::get_if<TCModel>(&decoded);
        return model ? *model : TCModel{};
    }

    std::vector<recording::Event> events;
    recording::EventSink sink = [this](const recording::Event& event) { events.push_back(event); };
    tests::IABApplication application;
    recording::DocumentTexts documents;
    recording::RecordingNotificationCenter notifications{sink};
    recording::RecordingLogger logger{sink};
    recording::StandingClock clock{1'700'000'000'000};
    recording::GivenVariables variables{{}};
    recording::RecordingApplication browser{sink};
    Runtime runtime{{application.store,
                     documents,
                     notifications,
                     logger,
                     clock,
                     variables,
                     variables,
                     {},
                     &application.library,
                     &browser}};
};

std::string newerList() {
    std::string list(kList);
    return list.replace(list.find(": 17"), 4, ": 18");
}

} // namespace

// The center's vendors, and its list also where a newer one came while it was shown.
TEST(InForce, HearsFromTheCenterWhomItShowed) {
    Process process({{"vendor-list", std::string(kList)},
                     {"privacy", R"({"information": {"vendors": "2,3,6,99,3"}})"}});
    VXIABPrivacyCenterViewController center;
    center.view()->setSize(375, 667);
    center.viewDidLoad();
    process.documents.install("vendor-list", newerList());
    center.setFilter(10001); // no filter of a list concerns it
    center.choose("PRIVACY_CAT_", 10001, true);
    center.choose("PRIVACY_VEN_", 1005, true);
    for (int again = 0; again < 2; ++again) {
        center.viewWillDisappear(false);
        const TCModel model = process.stored();
        EXPECT_EQ(model.vendorListVersion, 17u);
        EXPECT_EQ(model.disclosedVendors, (VendorSection{3, {2, 3}}));
        EXPECT_EQ(model.vendorConsent.vendors, IdentifierSet{3});
    }
    // Without a screen nobody is shown, and the newer list is the one.
    VXMobilePrivacy::sharedInstance().acceptAllConsent();
    EXPECT_EQ(process.stored().vendorListVersion, 18u);
    EXPECT_EQ(process.stored().disclosedVendors, VendorSection{});
    constexpr std::int32_t named[] = {2, 4};
    process.application.library.setDisclosedVendors(named);
    VXMobilePrivacy::sharedInstance().refuseAllConsent();
    EXPECT_EQ(process.stored().disclosedVendors->vendors, (IdentifierSet{2, 4}));
    EXPECT_EQ(process.stored().vendorLegitimateInterest.vendors, (IdentifierSet{2, 4}));
}

// The center shows what format 3 has in place of the fields of format 2.
TEST(ListOfFormat3, IsShownInTheSameElements) {
    Process process({{"vendor-list", R"({
        "gvlSpecificationVersion": 3, "vendorListVersion": 17, "tcfPolicyVersion": 4,
        "purposes": {"1": {"id": 1, "name": "One", "illustrations": ["First.", "Second."]},
                     "2": {"id": 2, "descriptionLegal": "Law.", "illustrations": ["Never."]},
                     "11": {"id": 11, "description": "Eleven.", "illustrations": []}},
        "vendors": {
            "1": {"id": 1, "name": "A", "purposes": [1], "urls": [
                {"langId": "de", "privacy": "https://a/de"}, {"langId": "fr", "privacy": "https://a/fr"},
                {"langId": "en", "privacy": "https://a/en"}]},
            "2": {"id": 2, "name": "B", "purposes": [1], "urls": [
                {"langId": "de", "privacy": "https://b/de"}, {"langId": "en", "privacy": "https://b/en"}]},
            "3": {"id": 3, "name": "C", "purposes": [1], "urls": [
                {"langId": "de", "privacy": "https://c/de"}]},
            "4": {"id": 4, "name": "D", "purposes": [1], "urls": [], "policyUrl": "https://d"}}})"},
                     {"purposes-fr", R"({"vendorListVersion": 29, "purposes": {
                         "1": {"id": 1, "name": "Un"}, "2": {"id": 2}}})"},
                     {"privacy", R"({"information": {"version": 1}})"}});
    const VXIABPrivacyCenterViewController list;
    EXPECT_EQ(list.getIABTranslation("purposes/1/descriptionLegal"), "First.\nSecond.");
    EXPECT_EQ(list.getIABTranslation("purposes/2/descriptionLegal"), "Law.");
    EXPECT_EQ(list.getIABTranslation("purposes/11/descriptionLegal"), "Eleven.");
    EXPECT_EQ(list.getIABTranslation("purposes/12/descriptionLegal"), std::nullopt);
    const auto policy = [&](const char* vendor, const char* language) {
        return std::string(VendorRecord(vendor, list.JSONDictionary()["vendors"][vendor])
                               .privacyPolicy(language)
                               .value_or(""));
    };
    EXPECT_EQ(policy("1", "fr"), "https://a/fr");
    EXPECT_EQ(policy("2", "fr"), "https://b/en");
    EXPECT_EQ(policy("3", "fr"), "https://c/de");
    EXPECT_EQ(policy("4", "fr"), "https://d");

    VXMobilePrivacy::sharedInstance().setLanguage("fr");
    const VXIABPrivacyCenterViewController translated;
    EXPECT_EQ(translated.getIABTranslation("purposes/11/name"), std::nullopt);
    const auto said = recording::Event{
        {"log", recording::Event::array({4, "purposes-fr has no purpose 11 of the vendor list: its "
                                            "texts stay empty"})}};
    EXPECT_EQ(std::ranges::count(process.events, said), 1);
}

namespace {

// What the first vendor's panel has: names, and texts beside them. Its links are followed.
std::vector<std::string> firstPanel() {
    VXMobilePrivacy::sharedInstance().setLanguage("fr");
    VXIABPrivacyCenterViewController center;
    center.startWithVendorScreen();
    center.view()->setSize(375, 667);
    center.viewDidLoad();
    VXVendorContentView& screen = *center.vendorContentView();
    const std::size_t before = screen.UIObjects().size();
    screen.displayDetails(*screen.detailBtns().front()->originalBtn());
    std::vector<std::string> panel;
    for (std::size_t i = before; i < screen.UIObjects().size(); ++i) {
        const std::string& name = screen.UIObjects()[i];
        View* view = screen.viewsDictionary().find(name)->get();
        if (auto* button = dynamic_cast<Button*>(view)) {
            panel.push_back(name + " " + button->title());
            touch(*button);
        } else {
            panel.push_back(name + " " + dynamic_cast<Label*>(view)->text());
        }
    }
    return panel;
}

} // namespace

TEST(ListOfFormat3, TellsOfDataInTheProfileAlone) {
    const recording::Texts files = {
        {"vendor-list", R"({
            "gvlSpecificationVersion": 3, "vendorListVersion": 17, "tcfPolicyVersion": 4,
            "dataCategories": {"1": {"id": 1, "name": "IP"}, "4": {"id": 4, "name": "Other"}},
            "vendors": {"7": {"id": 7, "name": "A", "specialPurposes": [1],
                "dataDeclaration": [1, "4", 4], "deviceStorageDisclosureUrl": "https://a/store",
                "dataRetention": {"stdRetention": 397, "purposes": {"3": 180, "4": "x"},
                                  "specialPurposes": {"1": 1096}},
                "urls": [{"langId": "en", "privacy": "https://a/en", "legIntClaim": "https://a/no"},
                         {"langId": "fr", "privacy": "https://a/fr", "legIntClaim": "https://a/li"}
            ]}}})"},
        {"purposes-fr", R"({"vendorListVersion": 17, "purposes": {"3": {"name": "Profil"}},
            "specialPurposes": {"1": {"name": "Fraude"}}, "dataCategories": {"1": {"name": "IP"}}})"},
        {"privacy", R"({"information": {"version": 1}, "texts_fr": {"generic": {
            "dataRetentionDef": "Jours", "stdRetentionDef": "Toujours"}}})"}};
    const std::vector<std::string> always = {"policyTitle2 ", "privacyPolicyBTN2 https://a/fr",
                                             "VDSpePurpTitle2 ", "VDSpePurpName12 - Fraude"};
    {
        Process specified(files, TCFProfile::Specified);
        EXPECT_EQ(firstPanel(), always);
    }
    std::vector<std::string> all = always;
    all.insert(all.end(), {"VDDataTitle2 ", "VDDataName12 - IP", "VDRetentionTitle2 Jours",
                           "VDStdRetentionName2 - Toujours: 397", "VDRetentionName32 - Profil: 180",
                           "VDSpeRetentionName12 - Fraude: 1096", "claimTitle2 ",
                           "legIntClaimBTN2 https://a/li", "storageTitle2 ",
                           "deviceStorageBTN2 https://a/store"});
    Process process(files);
    EXPECT_EQ(firstPanel(), all);
    const recording::Event said = {
        {"log",
         recording::Event::array({4, "purposes-fr has no data category 4 of the vendor list: "
                                     "its texts stay empty"})}};
    EXPECT_EQ(std::ranges::count(process.events, said), 1);
    EXPECT_EQ(std::ranges::count_if(process.events,
                                    [](const auto& event) { return event.contains("open"); }),
              3);
}
