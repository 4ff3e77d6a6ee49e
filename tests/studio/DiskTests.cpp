// A disk that takes nothing, and files that are in the way: said where it shows, and nothing that
// was saved is lost.

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "tests/studio/StudioProcess.h"
#include "tools/system/Files.h"

namespace vx::tests {

namespace {

namespace fs = std::filesystem;

// While it lives no file of the studio and its application may be written, as on a full disk.
class NoSpace {
public:
    explicit NoSpace(StudioProcess& studio) : studio_(studio) { limit(0); }
    ~NoSpace() { limit(RLIM_INFINITY); }
    NoSpace(const NoSpace&) = delete;
    NoSpace& operator=(const NoSpace&) = delete;

private:
    void limit(rlim_t most) {
        const rlimit files{most, RLIM_INFINITY};
        const pid_t studio = studio_.program().pid();
        EXPECT_EQ(::prlimit(studio, RLIMIT_FSIZE, &files, nullptr), 0);
        std::ifstream children("/proc/" + std::to_string(studio) + "/task/" +
                               std::to_string(studio) + "/children");
        for (pid_t child = 0; children >> child;)
            EXPECT_EQ(::prlimit(child, RLIMIT_FSIZE, &files, nullptr), 0);
    }

    StudioProcess& studio_;
};

std::string storeProblem(StudioProcess& studio) {
    return studio.get("state")["application"]["storeProblem"];
}

std::vector<std::string> namesIn(const std::string& directory) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory))
        names.push_back(entry.path().filename().string());
    return names;
}

void expectProblem(const Json& answer, const std::string& text) {
    EXPECT_NE(answer.value("error", "").find(text), std::string::npos) << answer;
}

// Opens a session, plays its first step and gives what became of that.
std::string firstStepOf(StudioProcess& studio, const std::string& session) {
    studio.post("session", session);
    studio.post("session/next");
    std::string note = studio.get("session/steps?from=1")[0]["note"];
    EXPECT_EQ(studio.post("session/close")["process"]["running"], true);
    return note;
}

} // namespace

TEST(StudioDisk, OnAFullOneTheStudioSaysWhatIsNotKeptAndGoesOn) {
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "ThreadSanitizer's runtime writes a file where an application begins";
#endif
    const TemporaryDirectory directory;
    const std::string store = directory / "store.sqlite";
    StudioProcess studio(ExistingStore(store), {});
    studio.post("accept");
    const std::string text = studio.get("sample").dump();
    EXPECT_EQ(studio.post("configuration", text)["version"], 2);
    const Json saved = studio.get("state")["application"]["store"];
    const std::uint64_t before = studio.now();
    const std::string published = tools::system::readFile(store + ".published.json");
    const std::vector<std::string> names = namesIn(directory / "");
    EXPECT_EQ(storeProblem(studio), "");
    {
        const NoSpace full(studio);
        studio.post("refuse");
        EXPECT_NE(storeProblem(studio), "");
        EXPECT_EQ(studio.get("state")["application"]["store"], saved);
        expectProblem(studio.post("configuration", text), "nothing was published: ");
        EXPECT_EQ(studio.get("state")["published"]["version"], 2);
        expectProblem(studio.post("restrictions", "{}"), "they cannot be shipped: ");
        const Json rehearsed = studio.post("rehearse", text);
        EXPECT_NE(rehearsed.value("problem", "").find("its store cannot be written"),
                  std::string::npos)
            << rehearsed;
        EXPECT_NE(firstStepOf(studio, R"({"do":"world","store":{"a":"b"}})")
                      .find("not done: its store cannot be written"),
                  std::string::npos);
    }
    EXPECT_EQ(tools::system::readFile(store + ".published.json"), published);
    for (const std::string& name : namesIn(directory / ""))
        EXPECT_TRUE(std::ranges::find(names, name) != names.end() || name.ends_with(".packaged"))
            << name; // no draft is left
    studio.post("relaunch");
    EXPECT_EQ(storeProblem(studio), "");
    EXPECT_EQ(studio.get("state")["application"]["store"], saved);
    EXPECT_EQ(studio.titles("store", before), std::vector<std::string>());
}

TEST(StudioDisk, AStoreThatAnotherProgramLocksIsSaidToBeAndKeepsWhatItHas) {
    const TemporaryDirectory directory;
    const std::string store = directory / "store.sqlite";
    Json saved;
    {
        StudioProcess studio(ExistingStore(store), {});
        saved = studio.post("accept")["application"]["store"];
    }
    std::optional<SQLite::Database> other(std::in_place, store, SQLite::OPEN_READWRITE);
    other->exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE");
    StudioProcess studio(ExistingStore(store), {});
    EXPECT_NE(storeProblem(studio).find("locked"), std::string::npos) << storeProblem(studio);
    EXPECT_EQ(studio.get("state")["application"]["store"], Json());
    other.reset();
    studio.post("relaunch");
    EXPECT_EQ(storeProblem(studio), "");
    EXPECT_EQ(studio.get("state")["application"]["store"], saved);
}

TEST(StudioDisk, WithoutATemporaryDirectoryNothingIsPlayedAndAllElseGoesOn) {
    StudioProcess studio({}, {"/usr/bin/env", "TMPDIR=/nonexistent"});
    studio.post("accept");
    const std::string what = "a temporary directory cannot be made";
    const Json rehearsed = studio.post("rehearse", studio.get("sample").dump());
    EXPECT_NE(rehearsed.value("problem", "").find(what), std::string::npos) << rehearsed;
    EXPECT_NE(firstStepOf(studio, R"({"do":"world"})").find("not done: " + what),
              std::string::npos);
    const Json state = studio.get("state");
    EXPECT_EQ(state["process"]["launches"], 1);
    EXPECT_EQ(state["application"]["engine"]["privacyState"], 1);
}

TEST(StudioDisk, AStoreThatCannotBeDeletedIsNoFreshInstallation) {
    const TemporaryDirectory directory;
    const std::string store = directory / "store.sqlite";
    StudioProcess studio(ExistingStore(store), {});
    fs::remove(store);
    fs::create_directories(store + "/in the way");
    const std::uint64_t before = studio.now();
    expectProblem(studio.post("reset"), store + " cannot be deleted: ");
    EXPECT_EQ(studio.titles("studio", before).front().find("No fresh installation: "), 0u);
    EXPECT_EQ(studio.get("state")["process"]["launches"], 2);
}

} // namespace vx::tests
