#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/studio/StudioProcess.h"
#include "tools/system/Files.h"

namespace vx::tests {

namespace {

namespace fs = std::filesystem;

struct Outcome {
    int status = 0;
    std::string errors;
};

Outcome startOn(const std::string& store) {
    ProgramRun run(
        {std::getenv("VXPRIVACY"), "studio", "--no-browser", "--port", "0", "--store", store});
    Outcome outcome;
    outcome.errors = run.errors(); // at once, or the test waits for ever
    outcome.status = run.wait();
    return outcome;
}

std::string foreignDatabase(const std::string& file, int application, bool withLog) {
    SQLite::Database database(file, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    if (withLog)
        database.exec("PRAGMA journal_mode = WAL");
    database.exec("PRAGMA application_id = " + std::to_string(application));
    database.exec("CREATE TABLE notes (text)");
    return file;
}

std::string contentOf(const fs::path& file) {
    return fs::is_regular_file(file) ? tools::system::readFile(file) : "";
}

} // namespace

TEST(StudioStore, WhatIsNoStoreOfOursIsRefusedAndStaysAsItIs) {
    const TemporaryDirectory directory;
    fs::create_directory(directory / "folder");
    writeFile(directory / "target.sqlite", "");
    fs::create_symlink(directory / "target.sqlite", directory / "link.sqlite");
    ASSERT_EQ(::mkfifo((directory / "fifo").c_str(), 0600), 0);
    const struct {
        std::string store;
        const char* what;
    } cases[] = {
        {writeFile(directory / "notes.txt", "Buy milk\n"), "another program's file"},
        {writeFile(directory / "long.txt", std::string(5000, 'x')), "another program's file"},
        {foreignDatabase(directory / "a.sqlite", 0, false), "another program's file"},
        {foreignDatabase(directory / "b.sqlite", 7, false), "another program's file"},
        {foreignDatabase(directory / "c.sqlite", 0, true), "another program's file"},
        {directory / "folder", "a directory"},
        {directory / "link.sqlite", "a link"},
        {directory / "fifo", "no regular file"},
        {directory / "notes.txt/store.sqlite", "Not a directory"},
    };
    for (const auto& [store, what] : cases) {
        SCOPED_TRACE(store);
        const std::string before = contentOf(store);
        const Outcome outcome = startOn(store);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.errors.find(what), std::string::npos) << outcome.errors;
        EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1);
        EXPECT_EQ(contentOf(store), before);
        EXPECT_FALSE(fs::exists(store + ".damaged-1") || fs::exists(store + ".lock"));
    }
}

TEST(StudioStore, WhatNothingTellsOfIsRefusedAndStaysAsItIs) {
    const TemporaryDirectory directory;
    const std::string store = directory / "store.sqlite";
    {
        SQLite::Database other(store, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        other.exec("PRAGMA journal_mode = WAL");
        other.exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE");
        const Outcome outcome = startOn(store);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.errors.find("locked by another program"), std::string::npos)
            << outcome.errors;
    }
    const std::string published =
        writeFile(directory / "store.sqlite.published.json", R"({"information": {"version": 9})");
    const Outcome outcome = startOn(store);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find(published), std::string::npos) << outcome.errors;
    EXPECT_EQ(contentOf(published), R"({"information": {"version": 9})");
}

TEST(StudioStore, TheOtherModesStoreIsLookedAtToo) {
    const TemporaryDirectory directory;
    foreignDatabase(directory / "store-iab.sqlite", 0, false);
    EXPECT_EQ(startOn(directory / "store.sqlite").status, 2);
}

TEST(StudioStore, AStoreOfOursIsTakenEvenDamagedOrOnlyInItsLog) {
    const TemporaryDirectory directory;
    const std::string store = directory / "store.sqlite";
    {
        StudioProcess studio(ExistingStore(store), {});
        studio.post("accept");
        studio.program().signal(SIGKILL);
        studio.expectEnd(-SIGKILL);
    }
    {
        StudioProcess studio(ExistingStore(store), {});
        EXPECT_EQ(studio.valueOf("state").front(), '1');
    }
    const auto size = static_cast<std::size_t>(fs::file_size(store));
    std::string text = tools::system::readFile(store);
    ASSERT_GT(size, 4096u);
    std::fill(text.begin() + 200, text.end(), 'x');
    writeFile(store, text);
    StudioProcess studio(ExistingStore(store), {});
    EXPECT_TRUE(fs::exists(store + ".damaged-1"));
    EXPECT_EQ(studio.valueOf("state").front(), '0');
}

TEST(StudioStore, ASecondStudioOnItSaysSo) {
    const TemporaryDirectory directory;
    const std::string store = directory / "store.sqlite";
    StudioProcess studio(ExistingStore(store), {});
    fs::create_directory_symlink(directory / "", directory / "again");
    for (const std::string& name : {store, std::string(directory / "again/store.sqlite")}) {
        const Outcome outcome = startOn(name);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.errors.find("in use by another studio (process "), std::string::npos)
            << outcome.errors;
    }
    studio.post("reset");
    EXPECT_EQ(startOn(store).status, 2);
    EXPECT_EQ(startOn(directory / "store-iab.sqlite").status, 2);
}

TEST(StudioStore, ThePublicationReplacesLinksAndTellsWhenItCannotBeKept) {
    const TemporaryDirectory directory;
    const std::string store = directory / "store.sqlite";
    const std::string kept = store + ".published.json";
    const std::string precious = R"({"information": {"version": 1}})";
    const std::string target = writeFile(directory / "precious.json", precious);
    fs::create_symlink(target, kept);
    StudioProcess studio(ExistingStore(store), {});
    const std::string text = studio.get("sample").dump();
    EXPECT_EQ(studio.post("configuration", text)["version"], 2);
    EXPECT_EQ(contentOf(target), precious);
    struct stat status {};
    ASSERT_EQ(::lstat(kept.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, static_cast<mode_t>(S_IFREG | S_IRUSR | S_IWUSR));

    fs::remove(kept);
    fs::create_directories(kept + "/in the way");
    const auto result = studio.client().Post(
        "/api/configuration", {{"X-Studio-Token", studio.valueOf("token")}}, text, "text/plain");
    ASSERT_TRUE(result);
    EXPECT_EQ(result->status, 500);
    EXPECT_NE(result->body.find("published.json"), std::string::npos) << result->body;
    EXPECT_EQ(studio.get("state")["published"]["version"], 2); // still
}

} // namespace vx::tests
