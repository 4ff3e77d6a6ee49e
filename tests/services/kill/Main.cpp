// kill_loop [ROUNDS [SEED]]: kills a process that saves and posts, at random moments, and checks
// after each kill that the store holds the state before or after a save, and in the end that the
// beacon of every save reached the collector.

#include <chrono>
#include <csignal>
#include <iostream>
#include <random>
#include <set>

#include "tests/services/LocalServer.h"
#include "tests/services/Support.h"
#include "tests/services/kill/Saver.h"
#include "tests/services/kill/Saves.h"

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <SQLiteCpp/SQLiteCpp.h>

namespace vx::services::test {

namespace {

using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;

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

// This program again, saving; what it says is read through a pipe.
class Victim {
public:
    Victim(const std::string& store, const std::string& host) {
        int ends[2];
        if (::pipe(ends) != 0)
            throw std::runtime_error("no pipe");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, ends[0]);
        std::string program = "/proc/self/exe", command = "save", path = store, where = host;
        char* arguments[] = {program.data(), command.data(), path.data(), where.data(), nullptr};
        const int failure =
            ::posix_spawn(&pid_, program.c_str(), &actions, nullptr, arguments, environ);
        posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        output_ = ends[0];
        if (failure != 0)
            throw std::runtime_error("the program cannot be started");
    }
    ~Victim() { ::close(output_); }
    Victim(const Victim&) = delete;
    Victim& operator=(const Victim&) = delete;

    void waitForFirstSave() { readUntil(Steady::now() + 30s, 1); }
    void letLive(std::chrono::microseconds time) { readUntil(Steady::now() + time, SIZE_MAX); }
    /// Kills it; the number of the last save that it reported, 0 for none.
    std::uint64_t kill() {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
        readUntil(Steady::now() + 30s, SIZE_MAX);
        const std::size_t end = said_.rfind('\n');
        if (end == std::string::npos)
            return 0;
        const std::size_t before = end == 0 ? std::string::npos : said_.rfind('\n', end - 1);
        return std::stoull(said_.substr(before == std::string::npos ? 0 : before + 1));
    }

private:
    // Reads until the time, the end, or this many characters.
    void readUntil(Steady::time_point time, std::size_t size) {
        while (said_.size() < size) {
            const auto left = time - Steady::now();
            const timespec wait{0, std::max<long>(0, std::min<long>(left.count(), 999'999'999))};
            pollfd descriptor{output_, POLLIN, 0};
            char text[4096];
            const int ready = ::ppoll(&descriptor, 1, &wait, nullptr);
            const ssize_t count = ready > 0 ? ::read(output_, text, sizeof text) : -1;
            if (count == 0 || (ready == 0 && Steady::now() >= time))
                return;
            if (count > 0)
                said_.append(text, static_cast<std::size_t>(count));
        }
    }

    pid_t pid_ = 0;
    int output_ = 0;
    std::string said_;
};

Entries entriesIn(const std::string& store) {
    Entries entries;
    SQLite::Database file(store, SQLite::OPEN_READWRITE, 1000);
    if (!file.tableExists("entries"))
        return entries; // killed before the store was made
    SQLite::Statement rows(file, "SELECT key, value FROM entries");
    while (rows.executeStep())
        entries[rows.getColumn(0).getString()] = rows.getColumn(1).getString();
    return entries;
}

class Loop {
public:
    explicit Loop(unsigned seed) : random_(seed) {}

    bool round() {
        Victim victim(store_, collector_.host());
        if (random_() % 4 != 0)
            victim.waitForFirstSave(); // else it may be hit while it starts
        victim.letLive(std::chrono::microseconds(random_() % 40'000));
        reported_ = std::max(reported_, victim.kill());
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
