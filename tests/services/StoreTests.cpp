#include <random>
#include <string>

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/services/TestServices.h"
#include "tests/services/faults/StoreFaults.h"
#include "tools/system/Files.h"

namespace vx::services::test {

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using tools::system::readFile;

using Text = std::optional<std::string>;

unsigned mode(const fs::path& file) {
    struct stat found {};
    return ::lstat(file.c_str(), &found) == 0 ? found.st_mode & 07777 : 0;
}

class Store : public testing::Test {
protected:
    // What a fresh process finds under `key`.
    Text reopened(std::string_view key) { return World(file).store().get(key); }

    TemporaryDirectory directory;
    const fs::path file = directory / "private/choices.db";
};

} // namespace

TEST_F(Store, KeepsAnyText) {
    for (const std::string& text :
         {""s, "1"s, "a\0b"s, "\xff\xfe\x80"s, "d'éjà vu\n;%@"s, std::string(100'000, 'x')}) {
        SCOPED_TRACE(testing::PrintToString(text.substr(0, 20)));
        World(file).store().set("key" + text, text);
        EXPECT_EQ(reopened("key" + text), text);
    }
    EXPECT_EQ(reopened("another key"), Text());
}

TEST_F(Store, RemovesAlsoWhatAnotherProcessReads) {
    World world(file);
    for (const char* key : {"removed", "kept", "rolled back"})
        world.store().set(key, "1");
    World other(file);
    world.store().remove("removed");
    world.store().remove("never there");
    {
        StoreTransaction transaction(world.store());
        world.store().remove("kept");
        world.store().set("kept", "2");
        world.store().remove("rolled back");
        EXPECT_EQ(world.store().get("rolled back"), Text());
    }
    EXPECT_EQ(world.store().get("removed"), Text());
    EXPECT_EQ(reopened("removed"), Text());
    EXPECT_EQ(reopened("kept"), "1");
    EXPECT_EQ(reopened("rolled back"), "1");
    other.store().set("another", "1"); // writing, it sees what the first one wrote
    EXPECT_EQ(other.store().get("removed"), Text());
    EXPECT_EQ(other.store().get("kept"), "1");
}

TEST_F(Store, AScopeIsWrittenWholeOrNotAtAll) {
    {
        World world(file);
        world.store().set("kept", "old");
        StoreTransaction outer(world.store());
        world.store().set("kept", "outer");
        {
            StoreTransaction inner(world.store());
            world.store().set("kept", "inner");
            world.store().set("added", "inner");
            EXPECT_EQ(world.store().get("added"), "inner");
        }
        EXPECT_EQ(world.store().get("kept"), "outer");
        EXPECT_EQ(world.store().get("added"), Text());
        StoreTransaction inner(world.store());
        world.store().set("second", "inner");
        inner.commit();
        EXPECT_EQ(reopened("kept"), "old");
        outer.commit();
        EXPECT_EQ(reopened("kept"), "outer");

        StoreTransaction dropped(world.store());
        world.store().set("second", "never");
    }
    EXPECT_EQ(reopened("second"), "inner");
    EXPECT_EQ(reopened("added"), Text());
}

TEST_F(Store, OnlyTheUserMayReadIt) {
    { World world(file); }
    World world(file);
    world.store().set("key", "value");
    EXPECT_EQ(mode(file.parent_path()), 0700U);
    for (const char* suffix : {"", "-wal", "-shm"})
        EXPECT_EQ(mode(fs::path(file) += suffix), 0600U) << suffix;
}

TEST_F(Store, LoosePermissionsAreTightened) {
    World(file).store().set("key", "value");
    ::chmod(file.c_str(), 0666);
    ::chmod(file.parent_path().c_str(), 0777);
    EXPECT_EQ(reopened("key"), "value");
    EXPECT_EQ(mode(file), 0600U);
    EXPECT_EQ(mode(file.parent_path()), 0700U);

    writeFile(file.parent_path() / "of somebody else", "");
    ::chmod(file.parent_path().c_str(), 0755);
    EXPECT_EQ(reopened("key"), "value");
    EXPECT_EQ(mode(file.parent_path()), 0755U) << "a directory with other files is left alone";
}

TEST_F(Store, ALinkIsNotFollowed) {
    const fs::path target = directory / "target.db";
    World(target).store().set("key", "of the target");
    fs::create_directories(file.parent_path());
    fs::create_symlink(target, file);
    World world(file);
    EXPECT_EQ(world.store().get("key"), Text());
    EXPECT_EQ(world.log.count("cannot be", 4), 1U) << world.log.text();
    world.store().set("key", "new");
    EXPECT_EQ(world.store().get("key"), "new");
    EXPECT_EQ(World(target).store().get("key"), "of the target");
}

TEST_F(Store, AFileThatIsNotOursIsMovedAside) {
    fs::create_directories(file.parent_path());
    const auto foreign = [&](const char* statement) {
        SQLite::Database(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
            .exec(statement);
    };
    const std::vector<std::function<void()>> cases{
        [&] { writeFile(file, "not a database at all, but long enough to look like one"); },
        [&] { foreign("CREATE TABLE theirs (x)"); },
        [&] { foreign("PRAGMA application_id = 7"); },
        [&] {
            World(file).store().set("key", "lost");
            foreign("PRAGMA user_version = 2");
        },
        [&] {
            World(file).store().set("key", "lost");
            std::string bytes = readFile(file);
            bytes.replace(100, bytes.size() - 100, bytes.size() - 100, '\x5a');
            writeFile(file, bytes);
        },
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(i);
        fs::remove(file);
        cases[i]();
        const std::string before = readFile(file);
        World world(file);
        EXPECT_EQ(world.log.count("is begun", 4), 1U) << world.log.text();
        EXPECT_EQ(readFile((fs::path(file) += ".damaged-") += std::to_string(i + 1)), before);
        EXPECT_EQ(world.store().get("key"), Text());
        world.store().set("key", "again");
        EXPECT_EQ(reopened("key"), "again");
    }
}

TEST_F(Store, DamageFoundInWritingCostsNoEntry) {
    World world(file);
    const auto save = [&](const std::string& value) {
        StoreTransaction transaction(world.store());
        for (int i = 0; i < 2000; ++i)
            world.store().set("key " + std::to_string(i), value);
        transaction.commit();
    };
    save("old");
    {
        SQLite::Database other(file.string(), SQLite::OPEN_READWRITE);
        other.exec("PRAGMA wal_checkpoint(TRUNCATE)");
    }
    std::string bytes = readFile(file);
    std::fill(bytes.begin() + 4096, bytes.end(), '\x5a');
    writeFile(file, bytes);
    save("new");
    EXPECT_EQ(world.log.count("is begun", 4), 1U) << world.log.text();
    EXPECT_EQ(reopened("key 0"), "new");
    EXPECT_EQ(reopened("key 1999"), "new");
}

TEST_F(Store, AFullDiskLosesNothing) {
    World world(file);
    world.store().set("before", "written");
    {
        const FullDisk full((fs::path(file) += "-wal"));
        for (int i = 0; i < 5; ++i) {
            StoreTransaction transaction(world.store());
            world.store().set("choice", std::to_string(i));
            world.store().set("before", std::string(10'000, 'x'));
            transaction.commit();
        }
        EXPECT_EQ(world.store().get("choice"), "4");
        EXPECT_EQ(world.log.count("cannot be written", 4), 1U) << world.log.text();
        {
            StoreTransaction dropped(world.store());
            world.store().set("choice", "never");
        }
    }
    EXPECT_EQ(reopened("before"), "written");
    EXPECT_TRUE(world.pollUntil([&] { return world.log.count("written again") == 1; }));
    EXPECT_EQ(reopened("choice"), "4");
    EXPECT_EQ(reopened("before"), std::string(10'000, 'x'));
}

TEST_F(Store, AStoreThatCannotBeOpenedIsTriedAgain) {
    writeFile(file.parent_path(), "a file stands where the directory should be");
    World world(file);
    world.store().set("choice", "1");
    EXPECT_EQ(world.store().get("choice"), "1");
    EXPECT_EQ(world.log.count("", 4), 1U) << world.log.text();
    fs::remove(file.parent_path());
    world.store().set("choice", "2");
    EXPECT_EQ(reopened("choice"), "2");
}

TEST_F(Store, AStoreThatComesBackIsReadWhereNothingIsSaved) {
    World(file).store().set("choice", "1");
    const fs::path away = fs::path(file.parent_path()) += ".away";
    fs::rename(file.parent_path(), away);
    writeFile(file.parent_path(), "a file stands where the directory should be");
    World world(file);
    EXPECT_EQ(world.store().get("choice"), std::nullopt);
    fs::remove(file.parent_path());
    fs::rename(away, file.parent_path());
    EXPECT_TRUE(world.pollUntil([&] { return world.store().get("choice") == "1"; }))
        << world.log.text();
    EXPECT_EQ(world.services.status().storeProblem, "");
}

TEST_F(Store, TwoProcessesNeverMixTheirSaves) {
    World one(file);
    World two(file);
    const auto save = [](World& world, const std::string& value) {
        StoreTransaction transaction(world.store());
        for (const char* key : {"a", "b", "c"})
            world.store().set(key, value);
        world.store().set("time of " + value, value);
        transaction.commit();
    };
    save(one, "1");
    save(two, "2");
    save(one, "1"); // to the first process nothing changed but the time
    for (const char* key : {"a", "b", "c"})
        EXPECT_EQ(reopened(key), "1") << key;
    EXPECT_EQ(one.store().get("time of 2"), "2") << "read with the last writing";
}

// A refusal must not be read as consent, whatever single bit turns over in the closed file.
TEST_F(Store, ABitThatTurnsOverNeverMakesConsent) {
    {
        World world(file);
        StoreTransaction transaction(world.store());
        for (int id = 1; id <= 60; ++id)
            world.store().set("PRIVACY_CAT_" + std::to_string(id), "0");
        world.store().set("PRIVACY_CONSENT", "0");
        transaction.commit();
    }
    const std::string sound = readFile(file);
    const std::size_t first = sound.find("PRIVACY_");
    const std::size_t size = sound.rfind("PRIVACY_") + 20 - first;
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        // Two in three hit the entries, the others anything else.
        const std::size_t place =
            round % 3 == 0 ? random() % sound.size() : first + random() % size;
        const unsigned bit = random() % 8;
        SCOPED_TRACE("byte " + std::to_string(place) + ", bit " + std::to_string(bit));
        std::string spoilt = sound;
        spoilt[place] = static_cast<char>(spoilt[place] ^ 1 << bit);
        fs::remove_all(file.parent_path());
        fs::create_directories(file.parent_path());
        writeFile(file, spoilt);
        World world(file);
        const bool whole = world.store().get("PRIVACY_CONSENT") == "0";
        for (int id = 1; id <= 60; ++id)
            ASSERT_EQ(world.store().get("PRIVACY_CAT_" + std::to_string(id)),
                      whole ? Text("0") : Text())
                << world.log.text();
    }
}

TEST_F(Store, DamageThatSQLiteDoesNotSeeMovesTheFileAside) {
    const auto change = [&](const char* statements) {
        SQLite::Database(file.string(), SQLite::OPEN_READWRITE).exec(statements);
    };
    const std::vector<std::function<void()>> cases{
        [&] { change("DELETE FROM entries WHERE key = 'key'"); },
        [&] { change("UPDATE entries SET value = 'another' WHERE key = 'key'"); },
        [&] { change("DROP TABLE outbox"); },
        [&] { change("DROP TABLE documents"); },
        [&] { // two keys that do not ascend
            std::string bytes = readFile(file);
            const std::size_t key = bytes.rfind("ascends");
            bytes.replace(key, 7, "zscends");
            writeFile(file, bytes);
        },
        [&] { // a format that SQLite calls unsupported, to be written or at all
            std::string bytes = readFile(file);
            bytes[18] = 9;
            writeFile(file, bytes);
        },
        [&] {
            std::string bytes = readFile(file);
            bytes[47] = 9;
            writeFile(file, bytes);
        },
        [&] { writeFile(fs::path(file) += "-wal", std::string(5000, '\x5a')); },
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(i);
        fs::remove_all(file.parent_path());
        for (const char* key : {"ascends", "key", "more"})
            World(file).store().set(key, "1");
        cases[i]();
        World world(file);
        EXPECT_EQ(world.log.count("is begun", 4), 1U) << world.log.text();
        const bool soundEntries = i == 2 || i == 3;
        EXPECT_EQ(world.store().get("more"), soundEntries ? Text("1") : Text());
        world.store().set("key", "again");
        EXPECT_EQ(reopened("key"), "again");
        if (i + 1 == cases.size()) {
            EXPECT_EQ(readFile((fs::path(file) += ".damaged-1") += "-wal"),
                      std::string(5000, '\x5a'));
        }
    }
}

TEST_F(Store, AStoreThatCannotBeOpenedDoesNotGrowWithEachSave) {
    writeFile(file.parent_path(), "a file stands where the directory should be");
    World world(file);
    for (int round = 0; round < 20; ++round)
        for (int id = 0; id < 50; ++id)
            world.store().set("key " + std::to_string(id), std::to_string(round));
    fs::remove(file.parent_path());
    world.store().set("key 0", "last");
    EXPECT_EQ(reopened("key 0"), "last");
    EXPECT_EQ(reopened("key 49"), "19");
}

} // namespace vx::services::test
