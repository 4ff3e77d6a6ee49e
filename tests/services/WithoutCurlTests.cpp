#include <atomic>
#include <string>

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include "tests/services/TestServices.h"
#include "tests/support/WaitUntil.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXNotifications.h"

// Run where libcurl is missing or too old.

namespace vx::services::test {

TEST(WithoutCurl, RequestsEndWithAnErrorAndBeaconsWait) {
    const TemporaryDirectory directory;
    const std::filesystem::path store = directory / "private/store.db";
    const std::string host = "http://127.0.0.1:9";
    World world(store);
    const Runtime runtime(world.services.platform());
    std::atomic<bool> woken = false;
    world.services.setWakeUp([&] { woken = true; });
    auto& factory = VXConfigurationFileFactory::sharedInstance();

    factory.addConfigurationFile("one", "version", host);
    world.services.platform().notifications.post(
        {std::string(kVXNotification_HTTPRequest), nullptr,
         Notification::UserInfo{{std::string(kVXUserInfo_URLKey), host},
                                {std::string(kVXUserInfo_POSTData), "{}"}}});
    EXPECT_TRUE(waitUntil([&] { return woken.load(); }));
    EXPECT_TRUE(world.pollUntil([&] {
        return world.log.count("one was not downloaded: libcurl") == 1 &&
               world.log.count("is tried again") == 1;
    })) << world.log.text();
    factory.addConfigurationFile("two", "version", host);
    world.clock.setNow(1'600'000'060'000);
    EXPECT_TRUE(world.pollUntil([&] {
        return world.log.count("two was not downloaded: libcurl") == 1 &&
               world.log.count("is tried again") == 2;
    })) << world.log.text();
    EXPECT_EQ(world.log.count("Nothing is downloaded or posted: libcurl", 4), 1U)
        << world.log.text();
    EXPECT_EQ(world.log.count("", 4), 1U + world.log.count("was found nowhere", 4))
        << world.log.text();

    SQLite::Database file(store.string(), SQLite::OPEN_READWRITE);
    EXPECT_EQ(file.execAndGet("SELECT count(*) FROM outbox").getInt(), 1);
    world.services.setWakeUp(nullptr);
}

} // namespace vx::services::test
