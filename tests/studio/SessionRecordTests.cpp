#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tools/studio/shared/EventStream.h"
#include "tools/studio/world/DataWatch.h"
#include "tools/studio/world/SessionRecord.h"

namespace vx::tests {

namespace {

using namespace tools::studio;

Json entriesOf(const Json& object) {
    Json entries = Json::array();
    for (const auto& [key, value] : object.items())
        entries.push_back({key, value});
    return entries;
}

Json start(const Json& store, const std::string& document = "{}") {
    return {{"now", 1000},
            {"iab", false},
            {"userAgent", "agent"},
            {"createdDate", ""},
            {"files", {{"privacy", document}}},
            {"store", entriesOf(store)}};
}

std::vector<std::string> linesOf(const Reply& script) {
    std::vector<std::string> lines;
    std::istringstream text(script ? *script : script.problem().text);
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

TEST(SessionRecord, ALaunchOnWhatTheOneBeforeLeftIsARelaunch) {
    EventStream events;
    SessionRecord record(events);
    events.append("process", "started\n{\"do\":\"relaunch\"}");
    record.launched(start(Json::object()));
    record.add({{"do", "acceptAllConsent"}});
    events.append({{"kind", "log"}, {"title", "by the engine"}, {"source", "engine"}});
    events.append({{"kind", "log"}, {"title", "by the services"}, {"source", "services"}});
    record.stored(entriesOf({{"A", "1"}, {"IABTCF_gdprApplies", "1"}, {"VXSDKIdentifier", "me"}}));
    record.add({{"do", "install"}, {"name", "privacy"}, {"text", "{\"a\":1}"}});
    record.launched(
        start({{"A", "1"}, {"IABTCF_gdprApplies", "1"}, {"VXSDKIdentifier", "me"}}, "{\"a\":1}"));
    record.launched(start({{"A", "2"}}, "{\"a\":1}"));
    record.kept(false); // the store is not written: another launch is on something else
    record.launched(start({{"A", "2"}}, "{\"a\":1}"));
    std::vector<std::string> expected = {
        "# process: started {\"do\":\"relaunch\"}",
        R"({"do":"world","now":1000,"iab":false,"width":390.0,"store":{},"files":{"privacy":"{}"},)"
        R"("coreVariables":{"kVXPredefinedVariable_UserAgent":"agent","kVXPredefinedVariable_SDKID":"me"}})",
        R"({"do":"acceptAllConsent"})",
        "# log: by the services",
        R"({"do":"install","name":"privacy","text":"{\"a\":1}"})",
        R"({"do":"clock","now":1000})",
        R"({"do":"relaunch"})",
        R"({"do":"world","now":1000,"iab":false,"width":390.0,"store":{"A":"2"},"files":{"privacy":"{\"a\":1}"},)"
        R"("coreVariables":{"kVXPredefinedVariable_UserAgent":"agent"}})"};
    expected.push_back(expected.back());
    std::vector<std::string> lines = linesOf(record.script());
    lines.erase(lines.begin()); // the heading
    EXPECT_EQ(lines, expected);
}

TEST(SessionRecord, TheOldestLaunchesGoAndASessionBeginsWithAWorld) {
    EventStream events;
    SessionRecord record(events);
    const std::string large(SessionRecord::kMostBytes / 2 - 1000, 'x');
    for (int launch = 0; launch < 3; ++launch)
        record.launched(start(Json::object(), large));
    const std::vector<std::string> lines = linesOf(record.script());
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[1], "# Begins at launch 2; what came before it is no longer kept.");
    EXPECT_TRUE(lines[2].starts_with("{\"do\":\"world\""));
    EXPECT_EQ(lines[4], "{\"do\":\"relaunch\"}");
    record.launched(start(Json::object(), large + large + large));
    record.add({{"do", "acceptAllConsent"}});
    EXPECT_FALSE(record.script());
    record.launched(start(Json::object()));
    EXPECT_TRUE(record.script());
}

TEST(DataWatch, AChangeHasWhatWasAndWhatIs) {
    EventStream events;
    SessionRecord record(events);
    DataWatch watch(events, record);
    watch.look({{"store", entriesOf({{"A", "1"}, {"B", "1"}})}});
    watch.look({{"store", entriesOf({{"B", "2"}, {"C", "3"}})}});
    watch.look({{"store", entriesOf({{"B", "2"}, {"C", "3"}})}});
    watch.look({{"sdk", {{"permanentData", entriesOf({{"B", "2"}})}}}});
    watch.look({{"store", entriesOf({{"B", "2"}, {"C", "3"}, {"D", std::string(200'000, 'x')}})}});
    const EventStream::Entries entries = events.entriesAfter(1);
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0]->title, "Store: 2 set, 1 removed");
    EXPECT_EQ(Json::parse(entries[0]->text)["body"],
              Json::parse(R"({"before":{"A":"1","B":"1"},"now":{"B":"2","C":"3"}})"));
    EXPECT_EQ(entries[1]->kind, "sdk");
    EXPECT_EQ(Json::parse(entries[2]->text)["body"],
              Json::parse(R"({"before":{},"now":{},"left out":1})"));
}

} // namespace vx::tests
