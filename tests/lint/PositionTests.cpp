// Lines and columns: of the value, of the name, of the object that lacks something, in code points.

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tools/lint/Lint.h"

namespace {

using Position = std::pair<std::size_t, std::size_t>;

// The position of the one finding for `path`.
Position positionOf(const std::string& path, const std::string& text) {
    std::vector<Position> found;
    for (const auto& finding : vx::tools::lint::lint(text))
        if (finding.path == path)
            found.emplace_back(finding.line, finding.column);
    EXPECT_EQ(found.size(), 1U) << path << " in " << text;
    return found.empty() ? Position() : found.front();
}

TEST(LintPositions, InThePlacesOfADocument) {
    const std::string version = R"({"information":{"version":1},)";
    const struct {
        const char* path;
        std::string text;
        Position position;
    } cases[] = {
        {"/information", "{}", {1, 1}},
        {"/information/version", "{\"information\":\r\n\t{ }}", {2, 2}},
        {"/information/version", "{\"information\" : {\"version\"\n:\n  -1}}", {3, 3}},
        {"/categories/0/ID", version + "\n\"categories\":[{\"name\":\"é😀\",\"ID\":7}]}", {2, 33}},
        {"/categories/1/ID",
         version + "\"categories\":[{\"ID\":\"1\",\"name\":\"\\n\"},\n{\"ID\":[1],"
                   "\"name\":\"\"}]}",
         {2, 7}},
        {"/components/firstLayerButton/1",
         version + "\n\"components\":{\"firstLayerButton\":[\"Detail\",\n1]}}",
         {3, 1}},
        {"/texts_xx", version + "\"texts_xx\":{}}", {1, 30}},
        {"", "{\"a\":1,\n\"é\" 2}", {2, 4}},
        {"", "[1,2", {1, 5}},
    };
    for (const auto& [path, text, position] : cases)
        EXPECT_EQ(positionOf(path, text), position) << text;
}

TEST(LintPositions, BehindNumbersThatTouchTheNextToken) {
    const std::string text = R"({"a":[1,[2],-3e1 ,4],"b":{"c":5},"information":{"version":0}})";
    EXPECT_EQ(positionOf("/information/version", text), Position(1, 1 + text.find("0}}")));
}

} // namespace
