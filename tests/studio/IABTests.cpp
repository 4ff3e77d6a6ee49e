#include <cstdlib>
#include <map>
#include <set>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "tests/studio/CenterPage.h"
#include "tools/studio/application/TCStringView.h"
#include "tools/studio/world/ServedVendorList.h"
#include "vxprivacy/services/iab/Encoder.h"

namespace vx::tests {

namespace {

/// The TC string that an answer shows.
struct Stored {
    explicit Stored(const Json& state) : store(textsIn(state["application"]["store"])) {
        const Json& shown = state["application"]["tcString"];
        EXPECT_EQ(shown.value("text", ""), store["IABTCF_TCString"]);
        core = shown.value("model", Json::object()).value("Core", Json::object());
    }
    std::size_t consents() const { return core["VendorConsent"]["Vendors"].size(); }

    std::map<std::string, std::string> store;
    Json core;
};

} // namespace

TEST(StudioIAB, ADecisionIsStoredAsATCStringAndShownDecoded) {
    StudioProcess studio({"--iab"});
    EXPECT_EQ(studio.valueOf("vendor list"), "version 3, 42 vendors");
    const Json before = studio.get("state")["application"];
    EXPECT_TRUE(before["tcString"].is_null());
    EXPECT_EQ(before["vendorList"]["vendors"][39],
              (Json{{"id", 767}, {"name", "<Angle> & \"Quote\" Media"}}));
    EXPECT_EQ(before["vendorList"]["vendors"][11].value("deleted", false), true);

    Stored accepted(studio.post("accept"));
    EXPECT_EQ(accepted.consents(), 39u); // all but those deleted
    EXPECT_EQ(accepted.core["VendorConsent"]["MaxVendorId"], 1203);
    EXPECT_EQ(accepted.core["VendorListVersion"], 3);
    EXPECT_EQ(accepted.core["PurposesConsent"], Json::array()); // no vendor is named
    EXPECT_EQ(accepted.store["IABTCF_VendorConsents"].size(), 1203u);
    EXPECT_EQ(accepted.store["IABTCF_CmpSdkID"], "90");
    EXPECT_EQ(accepted.store["PRIVACY_VEN_1003"], "1");

    const Stored refused(studio.post("refuse"));
    EXPECT_EQ(refused.consents(), 0u);
    EXPECT_EQ(refused.core["Created"], accepted.core["Created"]);
    EXPECT_EQ(Stored(studio.post("kill")).core, refused.core);
    EXPECT_TRUE(studio.post("reset")["application"]["tcString"].is_null());
}

TEST(StudioIAB, NamedVendorsBringTheirPurposesAlong) {
    StudioProcess studio({"--iab"});
    Json document = studio.get("sample");
    EXPECT_EQ(studio.post("lint", document.dump()).at(0)["path"], "/information/vendors");
    document["information"]["vendors"] = "16,41";
    EXPECT_EQ(studio.post("lint", document.dump()), Json::array());
    EXPECT_EQ(studio.post("rehearse", document.dump())["decision"]["reason"], "none");
    studio.post("configuration", document.dump());
    const std::uint64_t before = studio.now();
    studio.post("relaunch");
    ASSERT_FALSE(studio.await("log", "downloaded, version 2", before).is_null());
    const Stored accepted(studio.post("accept"));
    EXPECT_EQ(accepted.core["VendorConsent"]["Vendors"], Json::array({16, 41}));
    EXPECT_EQ(accepted.core["PurposesConsent"], Json::array({1, 2, 3, 4, 7}));
    EXPECT_EQ(accepted.core["PurposesLITransparency"], Json::array({7, 8, 9}));
    EXPECT_EQ(accepted.core["SpecialFeatureOptIns"], Json::array({1}));
}

TEST(StudioIAB, ALanguageIsSetAndEnglishIsANewLaunch) {
    StudioProcess studio({"--iab"});
    EXPECT_EQ(studio.get("state")["session"]["vendorList"]["languages"], Json::array({"de", "fr"}));
    const std::uint64_t before = studio.now();
    const auto codeAfter = [&](const char* action, const char* body = "") {
        return studio.post(action, body)["application"]["engine"]["languageCode"];
    };
    EXPECT_EQ(codeAfter("language", R"({"code": "de"})"), "de");
    EXPECT_FALSE(studio.await("log", "purposes-de was downloaded", before).is_null());
    studio.post("center/open", R"({"first": 1})");
    EXPECT_NE(CenterPage(studio).text.find("Werbung messen"), std::string::npos);
    EXPECT_EQ(codeAfter("relaunch"), "de");
    EXPECT_EQ(studio.get("state")["process"]["launches"], 2);
    EXPECT_TRUE(codeAfter("language", R"({"code": "en"})").is_null());
    EXPECT_EQ(studio.get("state")["process"]["launches"], 3);
    for (const char* unusable : {R"({"code": "xx"})", R"({"code": 7})", "de"})
        EXPECT_TRUE(studio.post("language", unusable).contains("error")) << unusable;
    EXPECT_EQ(studio.get("state")["code"]["language"], "en");
}

TEST(StudioIAB, RestrictionsShipWithTheApplication) {
    StudioProcess studio({"--iab"});
    ASSERT_FALSE(studio.await("log", "vendor-list was downloaded").is_null());
    const std::string document =
        R"({"version":1,"publisher":{"restrictions":{"2":{"6":0},"7":{"16":2}}}})";
    studio.post("restrictions", document);
    EXPECT_EQ(studio.get("restrictions"), Json::parse(document));
    for (const char* again : {"hit", "kill"}) {
        SCOPED_TRACE(again);
        studio.post(again);
        EXPECT_EQ(Stored(studio.post("accept")).core["PubRestrictions"],
                  Json::parse(R"([{"PurposeId":2,"RestrictionType":0,"Vendors":[6]},
                                  {"PurposeId":7,"RestrictionType":2,"Vendors":[16]}])"));
    }
    for (const auto& [unusable, problem] :
         {std::pair("{\n  oops }", "line 2, column 3"), std::pair("[]", "must be an object"),
          std::pair("\xEF\xBB\xBF{}", "byte order mark")}) {
        const std::string error = studio.post("restrictions", unusable).value("error", "");
        EXPECT_NE(error.find(problem), std::string::npos) << error;
    }
    EXPECT_EQ(studio.get("restrictions"), Json::parse(document));
    studio.post("restrictions", " ");
    EXPECT_EQ(Stored(studio.post("accept")).core["PubRestrictions"], Json::array());
}

TEST(StudioIAB, AStringIsShownBesideTheOneBefore) {
    StudioProcess studio({"--iab"});
    ASSERT_FALSE(studio.await("log", "vendor-list was downloaded").is_null());
    const Json first = studio.post("accept")["application"]["tcString"];
    EXPECT_TRUE(first["before"].is_null());
    EXPECT_FALSE(first["model"].contains("PublisherTC"));
    studio.post("publisher-tc", R"({"on": true})");
    studio.post("relaunch");
    studio.post("refuse");
    for (const char* action : {"hit", "relaunch", "kill"}) {
        SCOPED_TRACE(action);
        const Json now = studio.post(action)["application"]["tcString"];
        EXPECT_EQ(now["before"]["text"], first["text"]);
        EXPECT_EQ(now["before"]["model"], first["model"]);
        EXPECT_TRUE(now["model"].contains("PublisherTC"));
    }
    EXPECT_TRUE(studio.post("reset")["application"]["tcString"].is_null());
    EXPECT_TRUE(studio.post("accept")["application"]["tcString"]["before"].is_null());
}

TEST(StudioIAB, EachModeIsAnInstallationOfItsOwn) {
    StudioProcess studio;
    studio.post("accept");
    std::uint64_t before = studio.now();
    const Json iab = studio.post("mode", R"({"iab": true})");
    EXPECT_EQ(iab["session"]["iab"], true);
    EXPECT_EQ(iab["application"]["decision"]["reason"], "first-start");
    EXPECT_TRUE(studio.get("configuration").contains("components"));
    ASSERT_FALSE(studio.await("request", "/v2/vendor-list.json", before).is_null());
    ASSERT_FALSE(studio.await("log", "vendor-list was downloaded", before).is_null());
    EXPECT_EQ(Stored(studio.post("refuse")).core["VendorListVersion"], 3);

    const Json category = studio.post("mode", R"({"iab": false})");
    EXPECT_EQ(category["application"]["engine"]["privacyState"], 1);
    EXPECT_TRUE(category["application"]["tcString"].is_null());
    EXPECT_TRUE(studio.post("mode").contains("error"));
}

TEST(StudioIAB, ACenterThatClosesItselfSaves) {
    StudioProcess studio({"--iab"});
    ASSERT_FALSE(studio.await("log", "vendor-list was downloaded").is_null());
    for (const char* how : {R"({"first": 1})", R"({"first": 2, "pushed": true})"}) {
        SCOPED_TRACE(how);
        const std::uint64_t before = studio.now();
        EXPECT_EQ(studio.post("center/open", how)["application"]["center"]["closesItself"], true);
        CenterPage(studio).tapLink("Accept all");
        const Json state = studio.get("state");
        EXPECT_TRUE(state["application"]["center"].is_null());
        EXPECT_EQ(Stored(state).core["PurposesConsent"],
                  Json::array({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
        EXPECT_EQ(studio.titles("screen", before),
                  (std::vector<std::string>{"Privacy center opened", "Accept all tapped",
                                            "Privacy center left, the choices are saved"}));
    }
    EXPECT_EQ(studio.post("center/open", R"({"first": 3})").value("error", ""),
              "the first screen is 0, 1 or 2");
}

TEST(StudioIAB, TapsAreReportedWithTheirRowsOnScreensThatComeAndGo) {
    StudioProcess studio({"--iab"});
    ASSERT_FALSE(studio.await("log", "vendor-list was downloaded").is_null());
    const std::uint64_t before = studio.now();
    studio.post("center/open", R"({"first": 1})");
    CenterPage(studio).tapLink("Partners for this"); // to a screen made for it
    CenterPage(studio).tapLink("Details");           // a panel is made
    CenterPage(studio).tapLink("Purposes");
    EXPECT_EQ(studio.titles("screen", before),
              (std::vector<std::string>{
                  "Privacy center opened",
                  "Keep and read information on this device: Partners for this tapped",
                  "1st Meadow: Details tapped", "Purposes tapped"}));
}

TEST(StudioIAB, TheBackendServesTheListAndItsTranslations) {
    StudioProcess studio({"--iab"});
    httplib::Client backend(
        studio.valueOf("backend").substr(0, studio.valueOf("backend").find(' ')));
    EXPECT_EQ(Json::parse(backend.Get("/v2/purposes-de.json")->body)["purposes"]["7"]["name"],
              "Werbung messen");
    EXPECT_EQ(Json::parse(backend.Get("/v3/purposes-de.json")->body)["dataCategories"]["1"]["name"],
              "Netzadresse");
    EXPECT_EQ(backend.Get("/v2/purposes-es.json")->status, 404);
    EXPECT_EQ(backend.Get("/v2/category.json")->status, 404);
    const std::string tag = backend.Get("/v2/vendor-list.json")->get_header_value("ETag");
    EXPECT_EQ(backend.Get("/v2/vendor-list.json", {{"If-None-Match", tag}})->status, 304);
}

TEST(StudioIAB, AListOfFormat2MakesNoStringOfToday) {
    const TemporaryDirectory directory;
    const std::string list = R"({"gvlSpecificationVersion": 2, "vendorListVersion": 7,
        "purposes": {}, "specialFeatures": {}, "vendors": {"1": {"id": 1, "name": "A"}}})";
    StudioProcess studio({"--gvl", writeFile(directory / "list.json", list)});
    EXPECT_EQ(studio.valueOf("vendor list"), "version 7, 1 vendors");
    EXPECT_TRUE(studio.post("in-force").contains("error"));
    EXPECT_EQ(studio.post("in-force", R"({"on": true})")["code"]["inForce"], true);
    ASSERT_FALSE(studio.await("request", "/v3/vendor-list.json").is_null());
    EXPECT_TRUE(studio.post("accept")["application"]["tcString"].is_null());
    EXPECT_FALSE(studio.await("log", "none is written: there is no vendor list").is_null());
}

TEST(StudioIAB, TheRealListIsTakenWhole) {
    const char* data = std::getenv("VXPRIVACY_DATA");
    if (!data)
        GTEST_SKIP() << "VXPRIVACY_DATA does not name the folder of published data";
    StudioProcess studio({"--gvl", std::filesystem::path(data) / "gvl/vendor-list.json"});
    EXPECT_EQ(studio.valueOf("vendor list"), "version 224, 1007 vendors");
    const Stored accepted(studio.post("accept"));
    EXPECT_EQ(accepted.consents(), 824u);
    EXPECT_EQ(accepted.core["VendorListVersion"], 224);
    EXPECT_EQ(Stored(studio.post("refuse")).consents(), 0u);
}

TEST(StudioIAB, AGeneratedListIsTheSameForTheSameSeed) {
    const auto generated = [](const char* seed) {
        ProgramRun run({std::getenv("VXPRIVACY"), "gvl", "--vendors", "500", "--seed", seed});
        const std::string text = run.nextLine().value_or("");
        EXPECT_EQ(run.wait(), 0);
        return text;
    };
    const std::string text = generated("7");
    EXPECT_EQ(generated("7"), text);
    EXPECT_NE(generated("8"), text);
    const TemporaryDirectory directory;
    const auto list = tools::studio::readVendorList(writeFile(directory / "list.json", text));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->vendors, 500u);
    EXPECT_NE(list->name, tools::studio::sampleVendorLists().format2.name);
}

TEST(StudioIAB, AFileThatIsNoVendorListSaysWhy) {
    const std::string start = R"({"vendorListVersion":1,"purposes":{},"specialFeatures":{})";
    const std::pair<std::string, const char*> cases[] = {
        {"{\n  oops }", "line 2, column 3"},
        {"\xEF\xBB\xBF{}", "byte order mark"},
        {"[]", "a vendor list is an object"},
        {R"({"vendorListVersion":"3"})", "/vendorListVersion: "},
        {R"({"vendorListVersion":0})", "/vendorListVersion: "},
        {R"({"vendorListVersion":3})", "/purposes: "},
        {start + R"(,"vendors":[]})", "/vendors: "},
        {start + R"(,"vendors":{"2":{"id":2,"name":"A"},"3":{"id":"3"}}})", "/vendors/3: "},
        {start + R"(,"vendors":{"2":{"id":2,"name":null}}})", "/vendors/2: "},
        {std::string(9u << 20, ' '), "at most 8 MiB"},
    };
    const TemporaryDirectory directory;
    for (const auto& [text, problem] : cases) {
        SCOPED_TRACE(problem);
        const std::string file = writeFile(directory / "list.json", text);
        ProgramRun run(studioCommand(directory, {"--gvl", file}));
        const std::string errors = run.errors();
        EXPECT_EQ(run.wait(), 2);
        EXPECT_TRUE(errors.starts_with("vxprivacy studio: " + file + ": ")) << errors;
        EXPECT_NE(errors.find(problem), std::string::npos) << errors;
    }
}

TEST(StudioIAB, AStringThatCannotBeReadSaysWhere) {
    tools::studio::TCStringView view("");
    const Json state = view.state(Json::array({Json::array({"IABTCF_TCString", "COvFyGB"})}));
    EXPECT_EQ(state["text"], "COvFyGB");
    EXPECT_NE(state.value("problem", "").find("Core."), std::string::npos);
    EXPECT_TRUE(view.state(Json::array()).is_null());
}

TEST(StudioIAB, AStringIsCheckedByTheRulesInForce) {
    tools::studio::TCStringView view("");
    const std::string text = services::tcf::encode({.lastUpdated = 17'900'000'000});
    const Json state = view.state(Json::array({Json::array({"IABTCF_TCString", text})}));
    std::set<std::string> rules;
    for (const Json& finding : state["findings"])
        rules.insert(finding["rule"].get<std::string>());
    EXPECT_EQ(rules.count("policy-version") + rules.count("disclosed-vendors"), 2u);
}

} // namespace vx::tests
