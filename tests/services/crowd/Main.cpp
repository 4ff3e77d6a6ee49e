// crowd [PROCESSES [SAVES [ROUNDS]]]: starts so many processes at once on one store, ROUNDS times
// on none and on a damaged one, and then lets them make so many saves each, without a pause. What
// the file holds is always the save of one process, one file at most is moved aside, every beacon
// arrives, and no save takes longer than a second.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <SQLiteCpp/SQLiteCpp.h>

#include "tests/services/BeaconUsers.h"
#include "tests/services/kill/Saver.h"
#include "tests/support/LocalServer.h"
#include "tests/support/ProgramRun.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WaitUntil.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/services/core/Services.h"

namespace vx::services::test {

namespace {

namespace fs = std::filesystem;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kSavesEach = 10'000; // at most
constexpr int kBits = 30;
constexpr double kLongestSave = 1000; // milliseconds; a bound against hangs

// Who saves what is written into the categories, bit by bit, and then once more the other way
// round.
ConsentDictionary consentOf(int save) {
    ConsentDictionary consent;
    for (const int number : {save, ~save})
        for (int bit = 0; bit < kBits; ++bit)
            consent.set(numberedKey(kVXCategoryPrefix, static_cast<std::int32_t>(consent.size())),
                        (number >> bit & 1) != 0 ? "1" : "0");
    return consent;
}

std::string userOf(int process, int save) {
    return std::to_string(process * kSavesEach + save);
}

// A member of the crowd: makes its saves and prints how long the longest of them took.
int member(const std::string& store, const std::string& host, int number, int saves) {
    Settings settings;
    settings.store = store;
    settings.hosts = {host, host, host};
    settings.logLevel = kLogProblem;
    Services services(settings);
    const Runtime runtime(services.platform());
    VXMobilePrivacy& engine = VXMobilePrivacy::sharedInstance();
    engine.setSiteID(12, 5);
    Milliseconds longest{};
    for (int i = 1; i <= saves; ++i) {
        engine.setConsentUser(userOf(number, i));
        const auto start = std::chrono::steady_clock::now();
        engine.saveConsent(consentOf(number * kSavesEach + i));
        longest = std::max(longest, Milliseconds(std::chrono::steady_clock::now() - start));
        services.poll();
    }
    const bool durable = tests::waitUntil([&] {
        services.poll();
        return !services.status().pendingSince;
    });
    std::cout << longest.count() << std::endl;
    return durable ? 0 : 1;
}

class Crowd {
public:
    explicit Crowd(int processes) : processes_(processes) {}

    // Starts all on a store that is not there yet, or has what `content` says.
    bool start(const std::string& content, int saves) {
        saves_ = saves;
        const tests::TemporaryDirectory directory;
        const fs::path store = directory / "store.db";
        if (!content.empty())
            tests::writeFile(store, content);
        tests::LocalServer collector(
            [](const httplib::Request& request, httplib::Response& response) {
                response.status = request.method == "POST" ? 200 : 404;
            });
        std::vector<std::unique_ptr<tests::ProgramRun>> members;
        for (int i = 1; i <= processes_; ++i)
            members.push_back(std::make_unique<tests::ProgramRun>(
                std::vector<std::string>{"/proc/self/exe", "member", store, collector.host(),
                                         std::to_string(i), std::to_string(saves)}));
        std::atomic<bool> whole = true;
        std::jthread reader([&](const std::stop_token& stop) {
            while (!stop.stop_requested())
                whole = whole && saveIsWhole(store);
        });
        for (const auto& each : members) {
            const auto longest = each->nextLine();
            longest_ = std::max(longest_, longest ? std::stod(*longest) : 0);
            const std::string errors = each->errors();
            if (each->wait() != 0)
                return fault("a process failed: " + errors);
        }
        reader.request_stop();
        reader.join();
        return whole && saveIsWhole(store) && postAll(store, collector.host()) &&
               allArrived(collector) &&
               (movedAside(store) <= (content.empty() ? 0 : 1) || fault("a store was moved aside"));
    }

    double longest() const { return longest_; }

private:
    static bool fault(const std::string& what) {
        std::cerr << "crowd: " << what << "\n";
        return false;
    }

    // True while there is no store, and where what it holds is the save of one process.
    static bool saveIsWhole(const fs::path& store) {
        std::map<std::string, std::string> saved;
        try {
            SQLite::Database file(store.string(), SQLite::OPEN_READWRITE, 1000);
            SQLite::Statement rows(file,
                                   "SELECT key, value FROM entries WHERE key LIKE 'PRIVACY_CAT%'");
            while (rows.executeStep())
                saved[rows.getColumn(0).getString()] = rows.getColumn(1).getString();
        } catch (const SQLite::Exception&) {
            return true; // not made yet, or about to be moved aside
        }
        int save = 0;
        for (int bit = 0; bit < kBits; ++bit)
            if (saved[numberedKey(kVXCategoryPrefix, bit)] == "1")
                save |= 1 << bit;
        return save == 0 ||
               std::ranges::all_of(
                   consentOf(save),
                   [&](const auto& entry) { return saved[entry.first] == entry.second; }) ||
               fault("a mixture of two saves");
    }

    static std::ptrdiff_t movedAside(const fs::path& store) {
        const auto files = fs::directory_iterator(store.parent_path());
        return std::count_if(begin(files), end(files), [](const fs::directory_entry& entry) {
            return entry.path().filename().string().find("damaged") != std::string::npos;
        });
    }

    bool allArrived(tests::LocalServer& collector) const {
        const std::set<std::string> users = beaconUsers(collector);
        for (int process = 1; process <= processes_; ++process)
            for (int i = 1; i <= saves_; ++i)
                if (const std::string user = userOf(process, i); !users.contains(user))
                    return fault("the beacon of " + user + " is lost");
        return true;
    }

    const int processes_;
    int saves_ = 0;      // of each
    double longest_ = 0; // milliseconds
};

int run(int processes, int saves, int rounds) {
    Crowd crowd(processes);
    for (int round = 1; round <= rounds; ++round)
        for (const char* content : {"", "no store at all, but a text that was put in its place"})
            if (!crowd.start(content, 1))
                return 1;
    Crowd busy(processes);
    if (!busy.start("", saves))
        return 1;
    std::cout << "crowd: " << processes << " processes started " << 2 * rounds
              << " times at once, then made " << saves << " saves each; the longest took "
              << busy.longest() << " ms\n";
    return busy.longest() < kLongestSave ? 0 : 1;
}

} // namespace

} // namespace vx::services::test

int main(int count, char** arguments) {
    using namespace vx::services::test;
    const auto number = [&](int index, int otherwise) {
        return count > index ? std::stoi(arguments[index]) : otherwise;
    };
    if (count == 6 && arguments[1] == std::string_view("member"))
        return member(arguments[2], arguments[3], number(4, 0), number(5, 0));
    return run(number(1, 4), number(2, 200), number(3, 50));
}
