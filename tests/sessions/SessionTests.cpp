// Golden sessions: NAME.jsonl is played, and what it prints must be NAME.expected to the byte.

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tools/play/Player.h"
#include "tools/system/Files.h"

namespace {

using std::filesystem::path;

std::vector<path> sessions() {
    std::vector<path> found;
    for (const auto& entry : std::filesystem::directory_iterator(SESSIONS))
        if (entry.path().extension() == ".jsonl")
            found.push_back(entry.path());
    std::ranges::sort(found);
    return found;
}

std::string testName(const testing::TestParamInfo<path>& session) {
    std::string name = session.param.stem().string();
    std::ranges::replace_if(
        name, [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

class Session : public testing::TestWithParam<path> {};

TEST_P(Session, PrintsWhatIsExpected) {
    std::ifstream input(GetParam(), std::ios::binary);
    std::ostringstream output;
    EXPECT_TRUE(vx::tools::play::Player(output).run(input));
    EXPECT_EQ(vx::tools::system::readFile(path(GetParam()).replace_extension("expected")),
              output.str());
}

INSTANTIATE_TEST_SUITE_P(Golden, Session, testing::ValuesIn(sessions()), testName);

} // namespace
