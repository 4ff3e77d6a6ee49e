#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/studio/CenterPage.h"

namespace vx::tests {

namespace {

using Titles = std::vector<std::string>;

} // namespace

TEST(StudioCenter, WhatIsChosenInItIsStoredSentAndShownAgain) {
    StudioProcess studio;
    std::uint64_t before = studio.now();
    const Json opened = studio.post("center/open", R"({"width": 320})")["application"]["center"];
    EXPECT_EQ(opened["saveButton"], "Save my choices");
    EXPECT_EQ(studio.await("beacon", "", before)["body"]["privacyBeacon"]["privacy_action"], "V");

    CenterPage page(studio);
    EXPECT_TRUE(page.isOn("Readership statistics") && page.isOn("All purposes"));
    EXPECT_EQ(page.tap("Readership statistics")["off"].size(), 2u); // the global switch follows
    EXPECT_EQ(studio.titles("screen", before),
              (Titles{"Privacy center opened", "Readership statistics switched off"}));
    EXPECT_EQ(studio.await("screen", "switched off", before)["body"],
              (Json{{"PRIVACY_CAT_11", "0"}}));

    before = studio.now();
    const Json left = studio.post("center/dismiss");
    EXPECT_TRUE(left["application"]["center"].is_null());
    EXPECT_EQ(left["application"]["decision"]["mustAsk"], false);
    EXPECT_EQ(left["application"]["sdk"]["on"], true);
    auto permanent = textsIn(left["application"]["sdk"]["permanentData"]);
    EXPECT_EQ(permanent["PRIVACY_CAT_10"], "1");
    EXPECT_EQ(permanent["PRIVACY_CAT_11"], "0");
    EXPECT_EQ(studio.await("beacon", "", before)["body"]["privacyBeacon"]["list_categories"],
              "10,12,20,21,22,30,31,32,33,40");
    EXPECT_EQ(studio.titles("callback", before), Titles{"consentUpdated:"});
    EXPECT_EQ(studio.titles("screen", before),
              Titles{"Privacy center left, the choices are saved"});

    studio.post("relaunch");
    studio.post("center/open");
    const CenterPage again(studio);
    EXPECT_TRUE(again.isOn("Audience measurement"));
    EXPECT_FALSE(again.isOn("Readership statistics"));
    EXPECT_FALSE(again.isOn("All purposes"));
}

TEST(StudioCenter, AProcessThatEndsTakesItAwayAndSavesNothing) {
    StudioProcess studio;
    for (const char* end : {"kill", "relaunch", "reset"}) {
        SCOPED_TRACE(end);
        studio.post("center/open");
        CenterPage(studio).tap("Personalisation");
        const Json state = studio.post(end);
        EXPECT_TRUE(state["application"]["center"].is_null());
        EXPECT_EQ(state["application"]["decision"]["mustAsk"], true);
        EXPECT_EQ(CenterPage(studio).status, 404);
    }
}

TEST(StudioCenter, LinksOpenOnlyWhatABrowserMayOpen) {
    const TemporaryDirectory directory;
    const std::string file = directory / "links.json";
    writeFile(file, R"--({"information":{"version":1},"categories":[
        {"ID":"1","privacy_policy_text":"Web","privacy_policy_url":"https://example.org/p"},
        {"ID":"2","privacy_policy_text":"Mail","privacy_policy_url":"mailto:a@example.org"},
        {"ID":"3","privacy_policy_text":"Script","privacy_policy_url":"javascript:alert(1)"},
        {"ID":"4","privacy_policy_text":"File","privacy_policy_url":"file:///etc/passwd"}]})--");
    StudioProcess studio({"--config", file});
    studio.post("center/open");
    CenterPage page(studio);
    const std::uint64_t before = studio.now();
    EXPECT_EQ(page.tapLink("Web")["open"], Json::array({"https://example.org/p"}));
    EXPECT_EQ(page.tapLink("Mail")["open"], Json::array({"mailto:a@example.org"}));
    EXPECT_EQ(page.tapLink("Script"), Json::object());
    EXPECT_EQ(page.tapLink("File"), Json::object());
    EXPECT_EQ(
        studio.titles("screen", before),
        (Titles{"Web tapped", "Opens https://example.org/p", "Mail tapped",
                "Opens mailto:a@example.org", "Script tapped", "Does not open javascript:alert(1)",
                "File tapped", "Does not open file:///etc/passwd"}));
}

TEST(StudioCenter, ANewConfigurationIsShownWhenItIsOpenedAnew) {
    StudioProcess studio;
    studio.post("center/open");
    Json document = studio.get("sample");
    document["categories"][0]["name"] = "<b>Reading</b>";
    studio.post("configuration", document.dump());
    studio.post("center/dismiss");
    const std::uint64_t before = studio.now();
    studio.post("relaunch");
    ASSERT_FALSE(studio.await("log", "downloaded, version 2", before).is_null());
    studio.post("center/open");
    EXPECT_NE(CenterPage(studio).text.find("&lt;b&gt;Reading&lt;/b&gt;"), std::string::npos);
}

TEST(StudioCenter, WhatCannotBeDoneSaysWhy) {
    StudioProcess studio;
    const auto error = [&](const char* action, const std::string& body = "") {
        return studio.post(action, body).value("error", "");
    };
    EXPECT_EQ(error("center/dismiss"), "the privacy center is not open");
    EXPECT_EQ(error("center/event", "{}"), "the privacy center is not open");
    EXPECT_EQ(error("center/open", R"({"width": "wide"})"), ""); // as wide as a phone
    EXPECT_EQ(error("center/open"), "the privacy center is open already");
    EXPECT_EQ(error("center/event", std::string(5000, ' ')), "a body has 4 KiB at most here");
    for (const char* event : {"", "[]", "{\"tap\":7}", "{\"tap\":\"v999\"}", "\xff\xfe"})
        EXPECT_EQ(studio.post("center/event", event), Json::parse(R"({"gone":true})")) << event;
    EXPECT_NE(CenterPage(studio).policy.find("frame-ancestors 'self'"), std::string::npos);
}

TEST(StudioLint, FindingsCarryTheirPlace) {
    StudioProcess studio;
    Json document = studio.get("sample");
    EXPECT_EQ(studio.post("lint", document.dump()), Json::array());
    document["categories"][0]["ID"] = 10;
    const std::string text = document.dump(2);
    const Json findings = studio.post("lint", text);
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0]["path"], "/categories/0/ID");
    EXPECT_EQ(findings[0]["line"],
              1 + std::count(text.data(), text.data() + text.find(": 10"), '\n'));
    EXPECT_EQ(studio.post("lint", "{ oops").size(), 1u);
    EXPECT_EQ(studio.client().Post("/api/lint", "{}", "application/json")->status, 403);
}

} // namespace vx::tests
