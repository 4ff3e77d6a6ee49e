// Steps that cannot be run: one error line with the step's number, and nothing of it has happened.

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tools/play/Player.h"

namespace {

using Json = nlohmann::json;

struct Outcome {
    bool allRan;
    std::vector<Json> lines;
};

Outcome play(const std::string& session) {
    std::istringstream input(session);
    std::ostringstream output;
    Outcome outcome{vx::tools::play::Player(output).run(input), {}};
    std::istringstream printed(output.str());
    for (std::string line; std::getline(printed, line);)
        outcome.lines.push_back(Json::parse(line));
    return outcome;
}

// Plays the line after one that runs, with comments that have no number around both, and before
// one that must not run.
void expectError(const std::string& line, const std::string& why) {
    SCOPED_TRACE(line);
    const Outcome outcome =
        play("# comment\n\n{\"do\":\"store\"}\r\n \t\n#\n" + line + "\n{\"do\":\"store\"}\n");
    EXPECT_FALSE(outcome.allRan);
    EXPECT_EQ(outcome.lines, (std::vector<Json>{{{"step", 1}, {"result", Json::object()}},
                                                {{"step", 2}, {"error", "line 6: " + why}}}));
}

TEST(PlayerErrors, LinesThatAreNoStep) {
    const std::vector<std::pair<std::string, int>> columns = {{"{", 2},
                                                              {"{\"do\":\"store\"", 14},
                                                              {"store", 1},
                                                              {"{\"do\":\"store\"} {}", 16},
                                                              {" # comment", 2},
                                                              {"{\"do\":\"store\",}", 15},
                                                              {"{\"do\":\"\xff\"}", 8},
                                                              {"{\"do\":\"\\ud800\"}", 14},
                                                              {"{\"do\":'store'}", 7}};
    for (const auto& [line, column] : columns)
        expectError(line, "not valid JSON at column " + std::to_string(column));
    expectError(R"({"do":"set","vendorListVersion":1e999})", "not valid JSON");
    expectError("\xEF\xBB\xBF{}",
                "a byte order mark at column 1; save the session in UTF-8 without one");
    for (const char* line : {"[]", "null", "\"store\"", "1"})
        expectError(line, "not a JSON object");
    expectError(std::string(100000, '['), "not valid JSON at column 100001");
    expectError(std::string(100000, '[') + std::string(100000, ']'), "not a JSON object");
}

TEST(PlayerErrors, UnknownStepsAndQuestions) {
    for (const char* name : {"", "Store", "store:", "sendConsentHit", "setSiteID:containerID:"})
        expectError(Json{{"do", name}}.dump(), "unknown step: " + std::string(name));
    expectError(R"({"do":"ask","what":"isConsentAlreadyGiven:"})",
                "unknown question: isConsentAlreadyGiven:");
    for (const char* line : {"{}", R"({"do":null})", R"({"do":["store"]})", R"({"Do":"store"})"})
        expectError(line, "the step lacks do, a text");
}

TEST(PlayerErrors, ArgumentsThatAreMissingOrOfAnotherType) {
    const std::string text = ", a text";
    const std::string truth = ", true or false";
    const std::string integer = ", an integer of 32 bits";
    const std::string time = ", a number of milliseconds";
    const std::string texts = ", an object of texts";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {R"({"do":"world","now":-1})", "world lacks now" + time},
        {R"({"do":"world","now":1e3})", "world lacks now" + time},
        {R"({"do":"world","store":{"a":1}})", "world lacks store" + texts},
        {R"({"do":"world","files":["a"]})", "world lacks files" + texts},
        {R"({"do":"world","iab":1})", "world lacks iab" + truth},
        {R"({"do":"world","sdk":null})", "world lacks sdk" + truth},
        {R"({"do":"clock"})", "clock lacks now" + time},
        {R"({"do":"clock","now":"1"})", "clock lacks now" + time},
        {R"({"do":"write","value":"1"})", "write lacks key" + text},
        {R"({"do":"write","key":"a"})", "write lacks value, a text or null"},
        {R"({"do":"write","key":"a","value":1})", "write lacks value, a text or null"},
        {R"({"do":"setSiteID","privacyID":5})", "setSiteID lacks siteID" + integer},
        {R"({"do":"setSiteID","siteID":12})", "setSiteID lacks privacyID" + integer},
        {R"({"do":"setSiteID","siteID":2147483648,"privacyID":5})",
         "setSiteID lacks siteID" + integer},
        {R"({"do":"setSiteID","siteID":12,"privacyID":-2147483649})",
         "setSiteID lacks privacyID" + integer},
        {R"({"do":"setSiteID","siteID":99999999999999999999999,"privacyID":5})",
         "setSiteID lacks siteID" + integer},
        {R"({"do":"setSiteID","siteID":12.5,"privacyID":5})", "setSiteID lacks siteID" + integer},
        {R"({"do":"setSiteID","siteID":12,"privacyID":5,"containerID":"1"})",
         "setSiteID lacks containerID" + integer},
        {R"({"do":"customPCMSetSiteID","siteID":12,"privacyID":5,"containerID":null})",
         "customPCMSetSiteID lacks containerID" + integer},
        {R"({"do":"setLanguage"})", "setLanguage lacks code" + text},
        {R"({"do":"setConsentUser","user":7})", "setConsentUser lacks user" + text},
        {R"({"do":"registerCallback"})",
         "registerCallback lacks answers, an array of texts or null"},
        {R"({"do":"registerCallback","answers":["a",1]})",
         "registerCallback lacks answers, an array of texts or null"},
        {R"({"do":"set","switchDefaultState":"YES"})", "set lacks switchDefaultState" + truth},
        {R"({"do":"set","generatePublisherTC":true,"vendorListVersion":null})",
         "set lacks vendorListVersion" + integer},
        {R"({"do":"saveConsent"})", "saveConsent lacks consent" + texts},
        {R"({"do":"saveConsent","consent":null})", "saveConsent lacks consent" + texts},
        {R"({"do":"saveConsent","consent":{"PRIVACY_CAT_1":"1","PRIVACY_CAT_2":1}})",
         "saveConsent lacks consent" + texts},
        {R"({"do":"saveCustomCategoriesInSharedPreferences","consent":[]})",
         "saveCustomCategoriesInSharedPreferences lacks consent" + texts},
        {R"({"do":"propagateConsent"})", "propagateConsent lacks consent" + texts},
        {R"({"do":"notify"})", "notify lacks name" + text},
        {R"({"do":"notify","name":"a","userInfo":"b"})", "notify lacks userInfo, an object"},
        {R"({"do":"install","name":"a"})", "install lacks text" + text},
        {R"({"do":"ask"})", "ask lacks what" + text},
        {R"({"do":"ask","what":"isVendorAccepted"})", "ask lacks id" + integer},
        {R"({"do":"ask","what":"isVendorAccepted","id":"1"})", "ask lacks id" + integer},
        {R"({"do":"configuration"})", "configuration lacks document" + text},
        {R"({"do":"configuration","document":{}})", "configuration lacks document" + text},
        {R"({"do":"text","document":"{}"})", "text lacks key" + text},
        {R"({"do":"text","document":"{}","key":"a","suffix":1})",
         "text lacks suffix, a text or null"},
        {R"({"do":"colour"})", "colour lacks text" + text},
        {R"({"do":"change","old":""})", "change lacks new" + text}};
    for (const auto& [line, why] : cases)
        expectError(line, why);
}

TEST(PlayerErrors, ArgumentsThatNobodyKnows) {
    expectError(R"({"do":"store","":1})", "store has no argument ");
    expectError(R"({"do":"tap","name":"a","nmae":"b"})", "tap has no argument nmae");
    expectError(R"({"do":"setSiteID","siteID":1,"siteID privacyID":2,"privacyID":5})",
                "setSiteID has no argument siteID privacyID");
    expectError(R"({"do":"ask","what":"isConsentAlreadyGiven","id":1})", "ask has no argument id");
}

TEST(PlayerErrors, TheLimitsOfAnInteger) {
    const Outcome outcome = play(R"({"do":"setSiteID","siteID":2147483647,"privacyID":-2147483648})"
                                 "\n"
                                 R"({"do":"clock","now":18446744073709551615})");
    EXPECT_TRUE(outcome.allRan);
}

TEST(PlayerErrors, NothingIsNoSession) {
    for (const char* session : {"", "\n\n", "# comment", " \r\n\t"}) {
        const Outcome outcome = play(session);
        EXPECT_TRUE(outcome.allRan);
        EXPECT_TRUE(outcome.lines.empty());
    }
}

} // namespace
