// Any text at all: lint answers, and takes for JSON what the module takes for JSON.

#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tools/lint/FindingsReport.h"
#include "tools/lint/Lint.h"
#include "tools/system/Files.h"
#include "vxprivacy/platform/foundation/JSONValue.h"

namespace {

using vx::tools::lint::Finding;
using vx::tools::lint::lint;

bool saysNoJSON(const std::vector<Finding>& findings) {
    return findings.size() == 1 && findings[0].advice.problem.starts_with("The text is not valid");
}

void expectAnswer(const std::string& text) {
    const auto findings = lint(text);
    const bool isScalar =
        !findings.empty() && findings[0].advice.problem.starts_with("The document is");
    if (!isScalar) {
        EXPECT_EQ(saysNoJSON(findings), !vx::JSONValue::parse(text)) << text;
    }
    for (const Finding& finding : findings)
        EXPECT_TRUE(finding.line > 0 && finding.column > 0) << text;
    vx::tools::lint::asJSON(findings).dump(); // refuses what is no UTF-8
}

TEST(LintOfAnyText, AgreesWithTheModuleWhatIsJSON) {
    for (const char* text : {"",
                             " ",
                             "{",
                             "[1",
                             "[1]",
                             "[1 ]",
                             "[1}",
                             "{\"a\":1",
                             "{\"a\":1,}",
                             "[01]",
                             "[1e999]",
                             "[-0]",
                             "[1.]",
                             "[\"\\ud800\"]",
                             "[\"\\ud83d\\ude00\"]",
                             "[\"\xff\"]",
                             "[\"\xed\xa0\x80\"]",
                             "[\"\t\"]",
                             "[18446744073709551615]",
                             "[18446744073709551616]",
                             "[-9223372036854775808]",
                             "[-9223372036854775809]",
                             "{} {}",
                             "nul",
                             "\xEF\xBB\xBF{}",
                             "[\"\\u0000\"]"})
        expectAnswer(text);
    expectAnswer(std::string("[\0]", 3));
    for (int levels : {1000, 1023, 1024, 1025, 1026})
        expectAnswer(std::string(levels, '[') + std::string(levels, ']'));
}

TEST(LintOfAnyText, SurvivesMutations) {
    const std::string text = vx::tools::system::readFile(SAMPLES "/category.json");
    const std::string bytes = "{}[]\",:0e-\\u\n\xC3\xFF";
    std::mt19937 random(20);
    const auto below = [&](std::size_t bound) { return random() % bound; };
    for (int round = 0; round < 300; ++round) {
        std::string mutant = text;
        for (std::size_t edits = 1 + below(3); edits > 0; --edits)
            if (below(2) == 0)
                mutant[below(mutant.size())] = bytes[below(bytes.size())];
            else
                mutant.erase(below(mutant.size()), 1 + below(8));
        expectAnswer(mutant);
    }
}

TEST(LintOfAnyText, SurvivesSizeAndDepth) {
    EXPECT_TRUE(saysNoJSON(lint(std::string(4 << 20, '['))));
    std::string nested;
    for (int level = 0; level < 200000; ++level)
        nested += "{\"texts\":";
    EXPECT_TRUE(saysNoJSON(lint(nested)));
    std::string texts = "{\"a\":";
    for (int level = 0; level < 1000; ++level)
        texts += "{\"a\":";
    texts += std::string(1000, '}') + "}";
    texts.insert(texts.find('}'), "1");
    EXPECT_FALSE(saysNoJSON(lint("{\"texts\":" + texts + "}")));
    const auto findings = lint(std::string(vx::tools::lint::kLargestDocument + 1, ' '));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_NE(findings[0].advice.problem.find("larger"), std::string::npos);
}

} // namespace
