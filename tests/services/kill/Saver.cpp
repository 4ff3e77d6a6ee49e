#include "tests/services/kill/Saver.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <unistd.h>

#include "tests/services/kill/Saves.h"
#include "tests/support/WaitUntil.h"
#include "tools/system/Files.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/testing/RecordingDoors.h"

namespace vx::services::test {

namespace {

constexpr std::uint64_t kTwoDays = 2ull * 24 * 60 * 60 * 1000; // longer than any wait

Settings settings(const std::string& store, const std::string& host, const Clock& clock) {
    Settings settings;
    settings.store = store;
    settings.hosts = {host, host, host};
    settings.clock = &clock;
    settings.logLevel = kLogProblem;
    return settings;
}

std::uint64_t lastSaveIn(KeyValueStore& store) {
    const auto time = store.get(kVXConsentTime);
    return time ? lastSave({{std::string(kVXConsentTime), *time}}) : 0;
}

void report(std::uint64_t number) {
    if (!tools::system::writeAll(STDOUT_FILENO, std::to_string(number) + "\n"))
        ::_exit(3);
}

} // namespace

void saveForEver(const std::string& store, const std::string& host) {
    recording::StandingClock clock(timeOfSave(0));
    Services services(settings(store, host, clock));
    std::uint64_t number = lastSaveIn(services.platform().store);
    clock.setNow(timeOfSave(number));
    const Runtime runtime(services.platform());
    VXMobilePrivacy& engine = VXMobilePrivacy::sharedInstance();
    engine.setSiteID(12, 5);
    for (;;) {
        clock.setNow(timeOfSave(++number));
        engine.setConsentUser(userOfSave(number));
        engine.saveConsent(consentOfSave(number));
        report(number);
        services.poll();
    }
}

bool postAll(const std::string& store, const std::string& host) {
    recording::StandingClock clock(timeOfSave(0) + kTwoDays);
    Services services(settings(store, host, clock));
    SQLite::Database file(store, SQLite::OPEN_READWRITE, 1000);
    return tests::waitUntil([&] {
        services.poll();
        return file.execAndGet("SELECT count(*) FROM outbox").getInt() == 0;
    });
}

} // namespace vx::services::test
