#include <map>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/studio/StudioProcess.h"

namespace vx::tests {

namespace {

std::map<std::string, std::string> storeOf(const Json& state) {
    return textsIn(state["application"]["store"]);
}

bool mustAsk(const Json& state, const std::string& reason) {
    const Json& decision = state["application"]["decision"];
    return decision["mustAsk"] == true && decision["reason"] == reason;
}

const std::vector<std::string> kStartNotification = {"VXNotification_StartingTheSDK"};
const std::vector<std::string> kConsentUpdated = {"consentUpdated:"};

} // namespace

TEST(Studio, TheTranscriptTellsWhatTheEngineDid) {
    StudioProcess studio;
    EXPECT_EQ(studio.valueOf("configuration"), "version 1");
    EXPECT_EQ(studio.valueOf("display flag"), "1, first start, no choice was ever made");
    EXPECT_EQ(studio.valueOf("state"), "0, no decision known");
    EXPECT_NE(studio.transcript().find("GET /mobile/12/5/privacy.json?r="), std::string::npos);
}

TEST(Studio, AnAcceptanceIsStoredSentAndRestored) {
    StudioProcess studio;
    const std::uint64_t before = studio.now();
    const Json accepted = studio.post("accept");
    const std::map<std::string, std::string> store = storeOf(accepted);
    EXPECT_EQ(accepted["application"]["decision"]["mustAsk"], false);
    EXPECT_EQ(accepted["application"]["engine"]["privacyState"], 1);
    EXPECT_EQ(store.at("PRIVACY_CAT_11"), "1");
    EXPECT_EQ(store.at("PRIVACY_CONSENT"), "1");
    EXPECT_EQ(accepted["application"]["sdk"]["on"], true);
    EXPECT_EQ(accepted["application"]["sdk"]["permanentData"].size(), 11u);

    const Json beacon = studio.await("beacon", "/privacy-consent/", before);
    EXPECT_EQ(beacon.value("text", ""),
              R"--({"privacyBeacon":{"id_vx":"0","id_privacy":5,"site":12,"version":"1",)--"
              R"--("privacy_action":"1","list_categories":"10,11,12,20,21,22,30,31,32,33,40",)--"
              R"--("list_vendors":"","type_action":"pc_save","vxpid":")--" +
                  store.at("VXSDKIdentifier") +
                  R"--(","vxua":"HarbourWeekly/1.0 (VXPrivacy studio)"}})--");
    EXPECT_EQ(studio.titles("callback", before), kConsentUpdated);

    for (const char* restart : {"relaunch", "kill"}) {
        SCOPED_TRACE(restart);
        const std::uint64_t again = studio.now();
        const Json restored = studio.post(restart);
        EXPECT_EQ(storeOf(restored), store);
        EXPECT_EQ(restored["application"]["sdk"], accepted["application"]["sdk"]);
        EXPECT_EQ(studio.titles("notification", again), kStartNotification);
        EXPECT_EQ(studio.titles("callback", again), kConsentUpdated);
    }
    EXPECT_EQ(studio.get("state")["process"]["launches"], 3);
}

TEST(Studio, AChoiceExpiresWhenTheClockPassesItsAge) {
    StudioProcess studio;
    studio.post("accept");
    EXPECT_FALSE(mustAsk(studio.post("clock", R"({"advance": 394})"), "expired"));
    EXPECT_TRUE(mustAsk(studio.post("clock", R"({"advance": 2})"), "expired"));
    EXPECT_TRUE(mustAsk(studio.post("relaunch"), "expired"));
    EXPECT_TRUE(mustAsk(studio.post("clock", R"({"offset": 0})"), "was-expired"));
    EXPECT_TRUE(mustAsk(studio.post("relaunch"), "was-expired")); // still to be answered
    EXPECT_EQ(studio.post("refuse")["application"]["decision"]["mustAsk"], false);
    EXPECT_TRUE(mustAsk(studio.post("clock", R"({"advance": -1})"), "expired")); // from the future
    EXPECT_TRUE(studio.post("clock", R"({"advance": "soon"})").contains("error"));
}

TEST(Studio, APublishedVersionReachesTheNextLaunch) {
    StudioProcess studio;
    studio.post("accept");
    const Json sample = studio.get("sample");
    const struct {
        const char* change; // a merge patch
        bool asks;
        const char* reason;
        std::vector<std::string> callbacks; // before the restored consent is announced again
    } cases[] = {
        {R"({"information": {"version": null, "saveButton": "Done"}})", false, "none", {}},
        {R"({"categories": [{"ID": "50"}]})", false, "none", {"consentCategoryChanged"}},
        {R"({"information": {"significantChanges": "true"}})",
         true,
         "changed",
         {"significantChangesInPrivacy", "consentCategoryChanged"}},
        {R"({"information": {"resetSave": "true"}})", true, "reset", {"consentCategoryChanged"}},
    };
    int version = 1;
    for (const auto& [change, asks, reason, callbacks] : cases) {
        SCOPED_TRACE(change);
        Json document = sample;
        if (version > 1)
            document["categories"] = Json::array({{{"ID", "50"}}}); // as the second case left them
        document.merge_patch(Json::parse(change));
        const std::uint64_t undisturbed = studio.now();
        const Json rehearsal = studio.post("rehearse", document.dump());
        EXPECT_EQ(rehearsal["decision"]["mustAsk"], asks) << rehearsal;
        EXPECT_EQ(rehearsal["decision"]["reason"], reason);
        EXPECT_EQ(rehearsal["callbacks"], callbacks);
        EXPECT_EQ(rehearsal["over"]["version"], version);
        EXPECT_EQ(studio.titles("process", undisturbed), std::vector<std::string>());
        EXPECT_EQ(studio.post("configuration", document.dump())["version"], ++version);
        const std::uint64_t before = studio.now();
        studio.post("relaunch");
        ASSERT_FALSE(studio.await("log", "downloaded, version " + std::to_string(version), before)
                         .is_null());
        const Json decision = studio.post("hit")["application"]["decision"]; // as it is after that
        std::vector<std::string> heard = studio.titles("callback", before);
        std::erase(heard, "consentUpdated:");
        EXPECT_EQ(heard, callbacks);
        EXPECT_EQ(decision["mustAsk"], asks);
        EXPECT_EQ(decision["reason"], reason);
    }
    const std::pair<std::string, const char*> unusable[] = {
        {"{\n  oops }", "line 2, column 3"},
        {"\xEF\xBB\xBF" + sample.dump(), "byte order mark"},
        {"[]", "\"information\""},
        {"{\"information\": 1}", "\"information\""},
        {std::string(1'000'000, '['), "nested too deeply"},
    };
    for (const auto& [text, problem] : unusable) {
        for (const char* action : {"configuration", "rehearse"}) {
            const std::string error = studio.post(action, text).value("error", "");
            EXPECT_NE(error.find(problem), std::string::npos) << error;
        }
    }
    for (const char* over : {"4", "0"})
        EXPECT_EQ(studio.post("configuration?over=" + std::string(over), sample.dump())["error"],
                  "version 5 was published meanwhile");
    EXPECT_EQ(studio.get("state")["published"]["version"], version);
    EXPECT_EQ(studio.post("configuration?over=5", sample.dump())["version"], 6);
}

TEST(Studio, ABeaconWaitsForTheNetworkAndOutlivesTheProcess) {
    StudioProcess studio;
    studio.post("network", R"({"on": false})");
    const std::uint64_t before = studio.now();
    EXPECT_EQ(studio.post("refuse")["application"]["waitingBeacons"], 1);
    EXPECT_EQ(studio.post("kill")["application"]["waitingBeacons"], 1);
    EXPECT_TRUE(studio.titles("beacon", before).empty());
    studio.post("network", R"({"on": true})");
    studio.post("clock", R"({"advance": 1})"); // a request that failed three times waits for hours
    const Json beacon = studio.await("beacon", "", before);
    EXPECT_EQ(beacon["body"]["privacyBeacon"]["privacy_action"], "0");
    EXPECT_EQ(studio.post("hit")["beacons"]["arrived"], 1);
}

TEST(Studio, HitsFollowTheChoice) {
    StudioProcess studio;
    const auto hit = [&] {
        const std::uint64_t before = studio.now();
        studio.post("hit", R"({"name": "page <b>"})");
        return studio.await("hit", "page <b>", before)["body"];
    };
    EXPECT_EQ(hit()["sent"], false);
    studio.post("accept");
    const Json sent = hit();
    EXPECT_EQ(sent["sent"], true);
    EXPECT_EQ(sent["data"]["PRIVACY_CAT_40"], "1");
    const Json sdk = studio.post("refuse")["application"]["sdk"];
    EXPECT_EQ(sdk["sent"], 1);
    EXPECT_EQ(sdk["dropped"], 1);
    EXPECT_EQ(hit()["sent"], false);
}

TEST(Studio, AResetIsAFreshInstallation) {
    StudioProcess studio;
    const std::string identifier = storeOf(studio.post("accept")).at("VXSDKIdentifier");
    const Json fresh = studio.post("reset");
    EXPECT_TRUE(mustAsk(fresh, "first-start"));
    EXPECT_EQ(storeOf(fresh).count("PRIVACY_CONSENT"), 0u);
    EXPECT_NE(storeOf(studio.post("accept")).at("VXSDKIdentifier"), identifier);
}

TEST(Studio, WhatIsNoSessionIsRefusedWithItsPlace) {
    StudioProcess studio;
    const std::pair<std::string, const char*> cases[] = {
        {"# nothing\n\n", "no step"},
        {"\xEF\xBB\xBF# a session\n", "line 1: a byte order mark at column 1"},
        {"# a session\r\n\r\n{\"do\":}", "line 3: not valid JSON at column 7"},
        {studio.get("sample").dump(2), "line 1: not valid JSON at column 2; the file is one JSON"},
        {R"({"do":"fly"})", "line 1: unknown step: fly"},
        {R"({"do":"dismiss","name":"it"})", "line 1: dismiss has no argument name"},
        {R"({"do":"tap","name":)" + std::string(1'000'000, '[') + std::string(1'000'000, ']') + "}",
         "line 1: nested too deeply"},
        {std::string((8 << 20) + 1, '#'), "8 MiB at most"},
    };
    for (const auto& [script, problem] : cases) {
        const std::string error = studio.post("session", script).value("error", "");
        EXPECT_NE(error.find(problem), std::string::npos) << problem << ", not: " << error;
    }
    EXPECT_TRUE(studio.post("session/next").contains("error"));
    EXPECT_EQ(studio.get("state")["process"]["launches"], 1);
}

TEST(Studio, ASessionIsPlayedInAWorldOfItsOwn) {
    StudioProcess studio;
    const Json before = studio.post("accept");
    const struct {
        const char* step;
        bool isDone;
        const char* note;
    } steps[] = {
        {R"({"do":"setSiteID","siteID":12,"privacyID":5})", true, ""}, // in the usual world
        {R"({"do":"refuseAllConsent"})", true, ""},
        {R"({"do":"store"})", true, "a question"},
        {R"({"do":"notify","name":"Any"})", false, "no counterpart"},
        {R"({"do":"tap","name":"saveBtn"})", false, "no privacy center is open"},
        {R"({"do":"setLanguage"})", false, "setLanguage lacks code"},
        {R"({"do":"registerCallback","answers":["consentOutdated"]})", false, "all callbacks"},
        {R"({"do":"world","iab":true,"now":5,"store":{"A":"1"},"sdkData":{"a":"b"},"height":9})",
         false, "without sdkData, height"},
        {R"({"do":"present","center":"iab"})", true, ""},
        {R"({"do":"tap","name":"nowhere"})", false, "no view \"nowhere\""},
    };
    std::string script;
    for (const auto& each : steps)
        script += std::string(each.step) + "\n";
    EXPECT_EQ(studio.post("session", script)["process"], before["process"]);
    std::size_t number = 0;
    for (const auto& [step, isDone, note] : steps) {
        SCOPED_TRACE(step);
        EXPECT_EQ(studio.post("session/next")["playback"]["played"], ++number);
        const Json told = studio.get("session/steps?from=" + std::to_string(number))[0];
        EXPECT_EQ(told["done"], isDone);
        const std::string said = told["note"];
        EXPECT_TRUE(*note ? said.find(note) != std::string::npos : said.empty()) << said;
        if (number == 2) {
            EXPECT_EQ(studio.get("state")["application"]["engine"]["privacyState"], 2);
        }
    }
    const Json played = studio.get("state");
    EXPECT_EQ(storeOf(played).at("A"), "1");
    EXPECT_EQ(storeOf(played).count("PRIVACY_CONSENT"), 0u);
    EXPECT_FALSE(played["application"]["center"].is_null());
    for (const char* action : {"session/next", "configuration", "restrictions", "mode"})
        EXPECT_TRUE(studio.post(action, R"({"iab":false,"information":{}})").contains("error"))
            << action;
    const Json after = studio.post("session/close");
    for (const char* section : {"session", "clock", "published"})
        EXPECT_EQ(after[section], before[section]);
    for (const char* part : {"decision", "store", "sdk", "engine", "configuration"})
        EXPECT_EQ(after["application"][part], before["application"][part]);
}

} // namespace vx::tests
