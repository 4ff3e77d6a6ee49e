// What is found, where, and what is left alone.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "tools/lint/FindingsReport.h"
#include "tools/lint/Lint.h"
#include "tools/lint/Schema.h"
#include "tools/system/Files.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"

namespace {

using Json = nlohmann::ordered_json;
using vx::tools::lint::Severity;

const char* const kGood = R"({"information":{"version":1,"content":"c"},
    "categories":[{"ID":"1","name":"n","subcategories":[{"ID":"11","name":"m"}]}]})";

struct Expected {
    Severity severity;
    std::string path;
    std::string phrase; // of what is wrong, what is seen or how to mend it
};

constexpr Severity kError = Severity::Error;
constexpr Severity kWarning = Severity::Warning;

void expectIn(const std::string& text, const std::vector<Expected>& expected) {
    SCOPED_TRACE(text);
    const auto findings = vx::tools::lint::lint(text);
    EXPECT_EQ(findings.size(), expected.size()) << vx::tools::lint::asJSON(findings).dump(1);
    for (const auto& [severity, path, phrase] : expected) {
        const bool found = std::ranges::any_of(findings, [&](const auto& finding) {
            const auto& advice = finding.advice;
            const auto says = [&](const std::string& sentence) {
                return sentence.find(phrase) != std::string::npos;
            };
            return finding.severity == severity && finding.path == path &&
                   (says(advice.problem) || says(advice.effect) || says(advice.remedy));
        });
        EXPECT_TRUE(found) << path << ": " << phrase << " in "
                           << vx::tools::lint::asJSON(findings).dump(1);
    }
}

// In the good document after `patch` (RFC 7386).
void expect(const char* patch, const std::vector<Expected>& expected) {
    Json document = Json::parse(kGood);
    document.merge_patch(Json::parse(patch));
    expectIn(document.dump(), expected);
}

std::string sample() {
    return vx::tools::system::readFile(SAMPLES "/category.json");
}

TEST(Lint, LeavesGoodDocumentsAlone) {
    expectIn(kGood, {});
    expectIn(sample(), {});
    for (
        const char* patch :
        {R"({"information":{"version":2147483647,"significantChanges":"false","vendors":""}})",
         R"({"information":{"privacy_policy_url":"MAILTO:a@b.example","privacy_policy_text":"t"}})",
         R"({"customisation":{"content":{"fontcolor":"1d2B3a","own":"red"}}})",
         R"({"own":{"ID":0,"resetsave":[]},"global_consent":{"name":"all"}})"})
        expect(patch, {});
}

TEST(Lint, Information) {
    expect(R"({"information":null})", {{kError, "/information", "never installed"}});
    expect(R"({"information":{"version":null}})", {{kError, "/information/version", "missing"}});
    for (const char* version :
         {"0", "-1", "\"\"", "true", "null", "[]", "0.5", "2147483648", "\"99999999999\""})
        expectIn(std::string(R"({"information":{"content":"c","version":)") + version +
                     R"(},"categories":[{"ID":"1","name":"n"}]})",
                 {{kError, "/information/version", "do not install"}});
    for (const char* version : {"\"3\"", "1.5"})
        expect((std::string(R"({"information":{"version":)") + version + "}}").c_str(),
               {{kError, "/information/version", "counts as"}});
    for (const char* value : {"true", "\"TRUE\"", "\"yes\"", "1"})
        expect((std::string(R"({"information":{"significantChanges":)") + value + "}}").c_str(),
               {{kError, "/information/significantChanges", "nobody is asked again"}});
    expect(R"({"information":{"content":null}})", {{kError, "/information/content", "(null)"}});
    expect(R"({"information":{"vendors":"8, 24"},"texts":null})",
           {{kError, "/information/vendors", "without blanks"},
            {kWarning, "/texts", "every text there is empty"}});
}

TEST(Lint, AnIABConfigurationWithoutVendors) {
    const Expected finding{kWarning, "/information/vendors", "and no purpose"};
    const auto patch = [](const char* vendors) {
        return R"({"categories":null,"texts":{},"information":{"vendors":)" + std::string(vendors) +
               "}}";
    };
    const auto isFound = [&](const char* vendors) {
        Json document = Json::parse(kGood);
        document.merge_patch(Json::parse(patch(vendors)));
        return std::ranges::any_of(vx::tools::lint::lint(document.dump()), [&](const auto& found) {
            return found.path == finding.path &&
                   found.advice.effect.find(finding.phrase) != std::string::npos;
        });
    };
    EXPECT_TRUE(isFound("null"));
    EXPECT_TRUE(isFound("\"\""));
    EXPECT_FALSE(isFound("\"8,24\""));
}

TEST(Lint, BlankTexts) {
    for (const char* blank : {"\"\"", "\" \\n\\t\""}) {
        const std::string name = "\"name\":" + std::string(blank);
        expect(("{\"categories\":[{\"ID\":\"1\"," + name + "}]}").c_str(),
               {{kError, "/categories/0/name", "has no title"}});
        expect(("{\"information\":{\"content\":" + std::string(blank) + "}}").c_str(),
               {{kWarning, "/information/content", "is blank"}});
    }
}

TEST(Lint, Categories) {
    const auto with = [](const std::string& id) {
        return R"({"categories":[{"ID":)" + id + R"(,"name":"n"}]})";
    };
    const char* const path = "/categories/0/ID";
    expect(with("3").c_str(), {{kError, path, "\"3\""}});
    expect(with("\"03\"").c_str(), {{kError, path, "\"3\""}});
    expect(with("\" 3\"").c_str(), {{kError, path, "\"3\""}});
    for (const char* zero : {"0", "\"0\"", "\"x\"", "\"\"", "0.9"})
        expect(with(zero).c_str(), {{kError, path, "not saved"}});
    for (const char* high : {"1000", "\"1000\"", "\"99999999999\"", "1e9"})
        expect(with(high).c_str(), {{kError, path, "IAB"}});
    for (const char* low : {"-3", "\"-3\"", "\"-99999999999\""})
        expect(with(low).c_str(), {{kError, path, "nobody asks for"}});
    for (const char* other : {"[]", "{}", "true"})
        expect(with(other).c_str(), {{kError, path, ""}});
    expect(R"({"categories":[{"ID":"1","name":"n"},{"ID":"2","name":"n","subcategories":[
               {"ID":"1","name":"m"}]}]})",
           {{kError, "/categories/1/subcategories/0/ID", "/categories/0"}});
    expect(R"({"categories":[{"ID":"1","name":"n","subcategories":[
               {"ID":"2","name":"m","subcategories":[{"ID":"0"}]}]}]})",
           {{kError, "/categories/0/subcategories/0/subcategories", "not shown and not saved"}});
    expect(R"({"categories":[{},7]})", {{kError, "/categories/0/ID", "missing"},
                                        {kError, "/categories/0/name", "no title"},
                                        {kError, "/categories/1", "no such row"}});
    expect(R"({"global_consent":7})", {{kError, "/global_consent", "no switch for everything"}});
    expect(R"({"categories":null})", {{kWarning, "/categories", "counts as a refusal"}});
    expect(R"({"categories":[]})", {{kWarning, "/categories", "counts as a refusal"}});
    expect(R"({"categories":{}})", {{kError, "/categories", "not an array"}});
}

// The column is where something is to be done, from 1.
TEST(Lint, UsualMistakesInJSON) {
    using namespace std::string_literals;
    const std::vector<std::tuple<std::string, std::size_t, std::size_t, const char*>> cases = {
        {"{\"a\":1\n \"b\":2}", 1, 7, "a comma is missing"},
        {"{\"a\":\"x\"\n\n \"b\":2}", 1, 9, "a comma is missing"},
        {"[{}\n{}]", 1, 4, "a comma is missing"},
        {"[true[]]", 1, 6, "a comma is missing"},
        {"{\"a\":12\"b\":2}", 1, 8, "a comma is missing"},
        {"{\"a\" 1}", 1, 5, "a colon is missing"},
        {"{\"a\":1,\n}", 1, 7, "comma behind the last"},
        {"[1, ]", 1, 3, "comma behind the last"},
        {"{ // why\n\"a\":1}", 1, 3, "a comment"},
        {"{\"a\":1 /* why */}", 1, 8, "a comment"},
        {"# why\n{}", 1, 1, "a comment"},
        {"{'a':1}", 1, 2, "single quotation mark"},
        {"{\"a\":\n 'b'}", 2, 2, "single quotation mark"},
        {"\xEF\xBB\xBF{}", 1, 1, "byte-order mark"},
        {"\xFF\xFE{\0}\0"s, 1, 1, "UTF-16"},
        {"\0{\0}"s, 1, 1, "UTF-16"},
        {"{\"a\":\"\0\"}"s, 1, 7, "NUL"},
        {"{\"a\":1] \0"s, 1, 7, "expected '}'"},
        {"{\"a\":1", 1, 7, "end of input"}};
    for (const auto& [text, line, column, phrase] : cases) {
        SCOPED_TRACE(text);
        const auto findings = vx::tools::lint::lint(text);
        ASSERT_EQ(findings.size(), 1u);
        EXPECT_EQ(findings[0].line, line);
        EXPECT_EQ(findings[0].column, column);
        EXPECT_NE(findings[0].advice.problem.find("not valid JSON: "), std::string::npos);
        EXPECT_NE(findings[0].advice.problem.find(phrase), std::string::npos)
            << findings[0].advice.problem;
    }
}

TEST(Lint, Links) {
    const auto expectAt = [](const char* members, const Expected& expected) {
        expect((R"({"information":{)" + std::string(members) + "}}").c_str(), {expected});
        const std::string row = R"({"categories":[{"ID":"1","name":"n","subcategories":[
                                    {"ID":"2","name":"m",)" +
                                std::string(members) + "}]}]}";
        expect(row.c_str(), {{expected.severity,
                              "/categories/0/subcategories/0" +
                                  expected.path.substr(std::string("/information").size()),
                              expected.phrase}});
    };
    expectAt(R"("privacy_policy_text":"t")",
             {kWarning, "/information/privacy_policy_text", "not shown"});
    for (const char* address : {"https://", "http:///p", "HTTPS://?q", "https://a b"})
        expectAt(
            (R"("privacy_policy_text":"t","privacy_policy_url":")" + std::string(address) + '"')
                .c_str(),
            {kError, "/information/privacy_policy_url",
             address == std::string("https://a b") ? "%XX" : "names no host"});
    expectAt(R"("privacy_policy_url":"https://a.example")",
             {kError, "/information/privacy_policy_url", "without a title"});
    expectAt(R"("privacy_policy_url":"https://a.example","privacy_policy_text":"")",
             {kError, "/information/privacy_policy_text", "without a title"});
    for (const char* address : {"", "a.example", "/privacy", "ftp://a.example",
                                "javascript:alert(1)", "https", "file:///a", " https://a.example",
                                "https://a.example/a b", "https://a.example/é", "https://a%zz"})
        expectAt(
            (R"("privacy_policy_text":"t","privacy_policy_url":")" + std::string(address) + '"')
                .c_str(),
            {kError, "/information/privacy_policy_url", "does nothing"});
    expectAt(R"("privacy_policy_text":"t","privacy_policy_url":1)",
             {kError, "/information/privacy_policy_url", "no link"});
}

TEST(Lint, Colours) {
    const struct {
        const char* text;
        const char* phrase;
    } cases[] = {{"#fff", "#000FFF"},    {"#fff", "\"#ffffff\""},    {"", "black"},
                 {"red", "black"},       {" #1D2B3A", "black"},      {"rgb(1,2,3)", "black"},
                 {"blue", "#00000B"},    {"123456789", "white"},     {"#80FF0000", "#FF0000"},
                 {"#80FF0000", "alpha"}, {"#1D2B3A;", "six digits"}, {"#12345", "#012345"}};
    for (const auto& [text, phrase] : cases)
        expect(
            (R"({"customisation":{"button":{"disabledBackground":")" + std::string(text) + "\"}}}")
                .c_str(),
            {{kError, "/customisation/button/disabledBackground",
              std::string(phrase) == "six digits" ? "six hexadecimal digits" : phrase}});
    expect(R"({"customisation":{"content":{"fontcolor":12}}})",
           {{kError, "/customisation/content/fontcolor", "platform's own"}});
}

TEST(Lint, Contrast) {
    const std::string content = "/customisation/content/";
    const std::string button = "/customisation/button/";
    const struct {
        const char* colours; // of "customisation"
        std::vector<Expected> expected;
    } cases[] = {
        {R"("content":{"fontcolor":"#FFFFFF","backgroundcolor":"#FFFFFF"})",
         {{kWarning, content + "fontcolor", "1.00:1"}}},
        {R"("content":{"fontcolor":"#FFFFFF"})", {{kWarning, content + "fontcolor", "#767676"}}},
        {R"("content":{"fontcolor":"#767676"})", {}},
        {R"("content":{"fontcolor":"#777777"})", {{kWarning, content + "fontcolor", "4.47:1"}}},
        // The links' blue is fixed, and so is a text colour that is not given: the ground yields.
        {R"("content":{"backgroundcolor":"#9FBFDF","fontcolor":"#000000"})",
         {{kWarning, content + "backgroundcolor", "links"}}},
        {R"("content":{"backgroundcolor":"#000000"})",
         {{kWarning, content + "backgroundcolor", "links"},
          {kWarning, content + "backgroundcolor", "texts"}}},
        {R"("button":{"backgroundcolor":"#FFFFFF"})",
         {{kWarning, button + "backgroundcolor", "switches"}}},
        {R"("button":{"backgroundcolor":"#FEFEFE"})",
         {{kWarning, button + "backgroundcolor", "#949494"}}},
        {R"("button":{"backgroundcolor":"#949494"})", {}},
        // Buttons are the IAB screens'.
        {R"("button":{"fontcolor":"#FFFFFF"})", {}},
        {R"("button":{"disabledBackground":"#0D66A6"})", {}},
    };
    for (const auto& [colours, expected] : cases)
        expect((R"({"customisation":{)" + std::string(colours) + "}}").c_str(), expected);
    for (const auto& [name, colour, phrase] : {std::tuple("fontcolor", "#1F6F7A", "the buttons'"),
                                               {"disabledBackground", "#B9C4C6", "1.78:1"},
                                               {"disabledBackground", "#B9C4C6", "#717879"}}) {
        Json document = Json::parse(sample());
        document["customisation"]["button"].erase("disabledBackground");
        document["customisation"]["button"][name] = colour;
        expectIn(document.dump(), {{kWarning, button + name, phrase}});
    }
}

TEST(Lint, Buttons) {
    Json document = Json::parse(sample());
    const auto expectOf = [&](const char* name, const char* list, const Expected& expected) {
        document["components"] = {{name, Json::parse(list)}};
        expectIn(document.dump(), {expected});
    };
    const std::string first = "/components/firstLayerButton";
    expectOf("firstLayerButton", R"(["AcceptAll"])", {kError, first, "all three buttons"});
    expectOf("firstLayerButton", "[]", {kError, first, "Detail"});
    expectOf("firstLayerButton", R"(["Save","Detail"])", {kError, first + "/0", "no such button"});
    expectOf("firstLayerButton", R"(["Detail","RefuseAll","Detail"])",
             {kError, first + "/2", "the last place"});
    expectOf("secondLayerButton", "[]", {kError, "/components/secondLayerButton", "Save"});
    expectOf("secondLayerButton", R"("Save")",
             {kError, "/components/secondLayerButton", "show all three buttons"});
    expectOf("secondLayerButton", R"(["x","Save"])",
             {kError, "/components/secondLayerButton/0", "closes the gap"});
}

const char* const kList = R"({"vendorListVersion":1,
    "purposes":{"1":{"name":"a"},"2":{}},"features":{"1":{"name":7}},
    "vendors":{"8":{"purposes":[1,2,3],"legIntPurposes":[1],"specialPurposes":["1"]},
               "9":{"legIntPurposes":[3],"features":[1],"specialFeatures":[2]}}})";

TEST(Lint, VendorListsWithoutATextForAnID) {
    expectIn(kList, {{kError, "/purposes/2/name", "(null)"},
                     {kError, "/features/1/name", "(null)"},
                     {kError, "/vendors/8/purposes/2", "purpose 3, which is named 2 times"},
                     {kError, "/vendors/9/specialFeatures/0", "special feature 2"}});
    expectIn(R"({"vendorListVersion":[],"vendors":[[1],{"purposes":7}],"purposes":"x"})", {});
    expectIn(R"({"gvlSpecificationVersion":3,"vendorListVersion":1,"purposes":{"3":{"name":"a"}},
                 "dataCategories":{"1":{"name":"b"},"2":{}},
                 "vendors":{"8":{"dataDeclaration":[1,4,2],"dataRetention":{"stdRetention":9,
                     "purposes":{"3":1,"11":2,"12":"x"},"specialPurposes":{"1":3}}}}})",
             {{kError, "/vendors/8/dataRetention/purposes/11", "purpose 11"},
              {kError, "/vendors/8/dataRetention/specialPurposes/1", "special purpose 1"},
              {kError, "/dataCategories/2/name", "not told"},
              {kError, "/vendors/8/dataDeclaration/1", "data category 4"}});
    if (const char* data = std::getenv("VXPRIVACY_DATA")) {
        const std::filesystem::path folder = std::filesystem::path(data) / "gvl";
        const std::string list = vx::tools::system::readFile(folder / "vendor-list.json");
        EXPECT_TRUE(vx::tools::lint::lint(list).empty());
    }
}

TEST(Lint, TranslationsWithoutATextForAnID) {
    const auto findings = vx::tools::lint::lintTranslation(
        R"({"purposes":{"1":{"name":"a"},"2":{"name":"b"}},"specialFeatures":{"2":{"name":[]}}})",
        kList);
    std::vector<std::string> paths;
    for (const auto& finding : findings)
        paths.push_back(finding.path);
    EXPECT_EQ(paths, (std::vector<std::string>{"/features", "/purposes/3", "/specialFeatures/2"}));
    EXPECT_TRUE(vx::tools::lint::lintTranslation("{}", "no list").empty());
}

TEST(Lint, TextsOfEachLanguage) {
    Json document = Json::parse(sample());
    document["texts"]["popup"].erase("title");
    document["texts_fr"]["generic"]["backButton"] = Json::array();
    document["texts_de"] = document["texts_fr"];
    document["texts_de"].erase("popup");
    document["texts_el"] = document["texts"];
    document["texts_el"]["generic"] = 7;
    document["texts_el"]["popup"]["title"] = "title";
    document["texts_en"] = document["texts_xx"] = document["texts_FR"] = Json::object();
    expectIn(document.dump(), {{kError, "/texts/popup/title", "no title"},
                               {kError, "/texts_fr/generic/backButton", "no way back"},
                               {kError, "/texts_de/generic/backButton", "no way back"},
                               {kError, "/texts_de/popup", "The popup shows no text"},
                               {kError, "/texts_el/generic", "none between purposes and vendors"},
                               {kWarning, "/texts_en", "\"texts\""},
                               {kWarning, "/texts_xx", "never shown"},
                               {kWarning, "/texts_FR", "lower case"}});
}

TEST(Lint, TheSchemaKnowsTheLanguagesOfTheEngine) {
    const auto& schema = vx::tools::lint::privacyConfigurationSchema();
    for (char first = 'a'; first <= 'z'; ++first)
        for (char second = 'a'; second <= 'z'; ++second) {
            const std::string code{first, second};
            EXPECT_EQ(vx::VXMobilePrivacy::supportsLanguage(code),
                      !vx::tools::lint::schemasOfMember(schema, "texts_" + code).empty())
                << code;
        }
}

TEST(Lint, TheResetWord) {
    expect(R"({"information":{"resetSave":"1"}})",
           {{kWarning, "/information/resetSave", "next version"}});
    expect(R"({"information":{"content":"Press resetSave."}})",
           {{kError, "/information/content", "by accident"}});
    expect(R"({"own":{"no_resetSave":1}})", {{kError, "/own/no_resetSave", "by accident"}});
    expectIn(R"({"information":{"version":1,"content":"reset\u0053ave"},
                 "categories":[{"ID":"1","name":"n"}]})",
             {}); // it is looked for without parsing
}

TEST(Lint, Names) {
    for (const auto& [name, known] : {std::pair("Categories", "categories"),
                                      {"catgeories", "categories"},
                                      {"globalConsent", "global_consent"},
                                      {"customization", "customisation"}}) {
        Json document = Json::parse(kGood);
        document.erase(known);
        document[name] = 1;
        const auto findings = vx::tools::lint::lint(document.dump());
        EXPECT_TRUE(std::ranges::any_of(findings, [&](const auto& finding) {
            return finding.path == "/" + std::string(name) && finding.severity == kWarning &&
                   finding.advice.remedy == "Write \"" + std::string(known) + "\".";
        })) << name;
    }
    expectIn(R"({"information":{"version":1,"content":"c"},"categories":[{"ID":"1","name":"n"}],
                 "information":{"version":2},"own":[{"a/b":1,"a/b":2}]})",
             {{kError, "/information", "first"}, {kError, "/own/0/a~1b", "first"}});
}

TEST(Lint, GathersNoMoreThanIsUseful) {
    std::string rows = R"({"ID":1,"name":"n"})";
    for (std::size_t i = 0; i < vx::tools::lint::kMostFindings; ++i)
        rows += R"(,{"ID":1,"name":"n"})";
    const auto findings = vx::tools::lint::lint(R"({"categories":[)" + rows + "]}");
    EXPECT_EQ(findings.size(), vx::tools::lint::kMostFindings);
}

} // namespace
