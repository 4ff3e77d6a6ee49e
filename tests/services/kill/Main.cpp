// kill_loop [ROUNDS [SEED]]: kills a process that saves, posts and downloads, at random moments,
// and checks after each kill that the store holds the state before or after a save and a whole
// document, and in the end that the beacon of every save reached the collector.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <iostream>
#include <random>
#include <set>
#include <thread>

#include <SQLiteCpp/SQLiteCpp.h>

#include "tests/services/BeaconUsers.h"
#include "tests/services/kill/Saver.h"
#include "tests/services/kill/Saves.h"
#include "tests/support/LocalServer.h"
#include "tests/support/ProgramRun.h"
#include "tests/support/TestFiles.h"

namespace vx::services::test {

namespace {

using tests::LocalServer;
using tests::ProgramRun;
using tests::TemporaryDirectory;

Entries entriesIn(const std::string& store) {
    Entries entries;
    SQLite::Database file(store, SQLite::OPEN_READWRITE, 1000);
    if (!file.tableExists("entries"))
        return entries; // killed before the store was made
    SQLite::Statement rows(file, "SELECT key, value FROM entries WHERE key <> 'VXStoreDigest'");
    while (rows.executeStep())
        entries[rows.getColumn(0).getString()] = rows.getColumn(1).getString();
    return entries;
}

// A configuration of 64 KiB that is full of its version.
std::string documentOf(int version) {
    const std::string number = std::to_string(version);
    std::string filler;
    while (filler.size() < 64 * 1024)
        filler += number + " ";
    return R"({"information":{"version":)" + number + R"(},"filler":")" + filler + R"("})";
}

// The offline copy of the configuration; empty when there is none.
std::string copyIn(const std::string& store) {
    SQLite::Database file(store, SQLite::OPEN_READWRITE, 1000);
    if (!file.tableExists("documents"))
        return "";
    SQLite::Statement rows(file, "SELECT text FROM documents WHERE name LIKE '%privacy'");
    return rows.executeStep() ? rows.getColumn(0).getString() : "";
}

class Loop {
public:
    explicit Loop(unsigned seed) : random_(seed) {}

    bool round() {
        // This program again; few of its lines fit into 40 ms, so that it never waits for a reader.
        ProgramRun saver({"/proc/self/exe", "save", store_, collector_.host()});
        // Some are hit while they start, and some when a document arrived.
        for (auto lines = random_() % 4 == 3 ? 40 : random_() % 2; lines > 0; --lines)
            hear(saver);
        std::this_thread::sleep_for(std::chrono::microseconds(random_() % 40'000));
        saver.signal(SIGKILL);
        saver.wait();
        while (hear(saver))
            continue;
        std::cerr << saver.errors();
        return isWhole();
    }

    bool allBeaconsArrived() {
        if (!postAll(store_, collector_.host()))
            return fault("beacons are left in the store");
        const std::set<std::string> arrived = beaconUsers(collector_);
        for (std::uint64_t number = 1; number <= saves_; ++number)
            if (!arrived.contains(userOfSave(number)))
                return fault("the beacon of save " + std::to_string(number) + " is lost");
        return true;
    }

    std::uint64_t saves() const { return saves_; }
    // The version of the document that the store has now.
    int version() const { return version_; }

private:
    // Takes the number of one more save that returned; false when there is none.
    bool hear(ProgramRun& saver) {
        const std::optional<std::string> number = saver.nextLine();
        if (number)
            reported_ = std::max<std::uint64_t>(reported_, std::stoull(*number));
        return number.has_value();
    }

    bool isWhole() {
        if (!std::filesystem::exists(store_))
            return reported_ == 0 || fault("the store is gone");
        const Entries entries = entriesIn(store_);
        saves_ = lastSave(entries);
        if (saves_ < reported_ || saves_ > reported_ + 1)
            return fault("save " + std::to_string(reported_) + " returned, but the store holds " +
                         std::to_string(saves_));
        reported_ = saves_;
        if (entries != entriesAfter(saves_) && !(entries.empty() && saves_ == 0))
            return fault("save " + std::to_string(saves_) + " is not whole");
        return documentIsWhole();
    }

    bool documentIsWhole() {
        const std::string text = copyIn(store_);
        while (version_ < served_ && text != (version_ == 0 ? "" : documentOf(version_)))
            ++version_;
        return text == (version_ == 0 ? "" : documentOf(version_)) ||
               fault("the document is not whole, or an older one");
    }

    bool fault(const std::string& what) {
        std::cerr << "kill_loop: " << what << "\n";
        return false;
    }

    TemporaryDirectory directory_;
    const std::string store_ = (directory_ / "store.db").string();
    std::atomic<int> served_ = 0; // the version last given out
    LocalServer collector_{[this](const httplib::Request& request, httplib::Response& response) {
        if (request.method != "POST")
            response.set_content(documentOf(++served_), "application/json");
    }};
    std::mt19937 random_;
    std::uint64_t reported_ = 0;
    std::uint64_t saves_ = 0;
    int version_ = 0;
};

int run(int rounds, unsigned seed) {
    std::cout << "kill_loop: " << rounds << " rounds, seed " << seed << std::endl;
    Loop loop(seed);
    for (int round = 1; round <= rounds; ++round)
        // Now and then all are posted, or the outbox would be full.
        if (!loop.round() || ((round % 100 == 0 || round == rounds) && !loop.allBeaconsArrived()))
            return 1;
    std::cout << "kill_loop: " << loop.saves()
              << " saves, each whole, each beacon posted; document " << loop.version()
              << " whole\n";
    return 0;
}

} // namespace

} // namespace vx::services::test

int main(int count, char** arguments) {
    using namespace vx::services::test;
    if (count == 4 && arguments[1] == std::string_view("save"))
        saveForEver(arguments[2], arguments[3]);
    const int rounds = count > 1 ? std::stoi(arguments[1]) : 200;
    const unsigned seed =
        count > 2 ? static_cast<unsigned>(std::stoul(arguments[2])) : std::random_device{}();
    return run(rounds, seed);
}
