// kill_loop [ROUNDS [SEED]]: kills a process that saves and posts, at random moments, and checks
// after each kill that the store holds the state before or after a save, and in the end that the
// beacon of every save reached the collector.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iostream>
#include <random>
#include <set>
#include <thread>

#include <SQLiteCpp/SQLiteCpp.h>

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

// The users whose beacons the collector got.
std::set<std::string> users(LocalServer& collector) {
    constexpr std::string_view before = R"("vxpid":")";
    std::set<std::string> users;
    for (const httplib::Request& request : collector.requests()) {
        if (request.method != "POST")
            continue;
        const std::size_t start = request.body.find(before) + before.size();
        users.insert(request.body.substr(start, request.body.find('"', start) - start));
    }
    return users;
}

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

class Loop {
public:
    explicit Loop(unsigned seed) : random_(seed) {}

    bool round() {
        // This program again; few of its lines fit into 40 ms, so that it never waits for a reader.
        ProgramRun saver({"/proc/self/exe", "save", store_, collector_.host()});
        if (random_() % 4 != 0)
            hear(saver); // else it may be hit while it starts
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
        const std::set<std::string> arrived = users(collector_);
        for (std::uint64_t number = 1; number <= saves_; ++number)
            if (!arrived.contains(userOfSave(number)))
                return fault("the beacon of save " + std::to_string(number) + " is lost");
        return true;
    }

    std::uint64_t saves() const { return saves_; }

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
        return true;
    }

    bool fault(const std::string& what) {
        std::cerr << "kill_loop: " << what << "\n";
        return false;
    }

    TemporaryDirectory directory_;
    const std::string store_ = (directory_ / "store.db").string();
    LocalServer collector_{[](const httplib::Request& request, httplib::Response& response) {
        response.status = request.method == "POST" ? 200 : 404;
    }};
    std::mt19937 random_;
    std::uint64_t reported_ = 0;
    std::uint64_t saves_ = 0;
};

int run(int rounds, unsigned seed) {
    std::cout << "kill_loop: " << rounds << " rounds, seed " << seed << std::endl;
    Loop loop(seed);
    for (int round = 1; round <= rounds; ++round)
        if (!loop.round())
            return 1;
    if (!loop.allBeaconsArrived())
        return 1;
    std::cout << "kill_loop: " << loop.saves() << " saves, each whole, each beacon posted\n";
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
