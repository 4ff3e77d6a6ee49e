// What an application can know of its services.

#include <atomic>
#include <optional>
#include <string>

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include "tests/services/TestServices.h"
#include "tests/support/LocalServer.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"

namespace vx::services::test {

namespace {

namespace fs = std::filesystem;

class ServicesStatus : public testing::Test {
protected:
    static Settings at(const std::string& host) {
        Settings settings;
        settings.hosts = {host, host, host};
        return settings;
    }

    TemporaryDirectory directory;
    const fs::path store = directory / "private/store.db";
};

} // namespace

TEST_F(ServicesStatus, SaysSinceWhenAndWhyASaveIsNotDurableAndTellsWhenItIs) {
    World world(store);
    int told = 0;
    world.services.setOnDurable([&] {
        ++told;
        EXPECT_FALSE(world.services.status().pendingSince);
        world.store().set("in the callback", "1");
        EXPECT_EQ(World(store).store().get("in the callback"), "1") << "no transaction is open";
    });
    world.store().set("choice", "1");
    EXPECT_FALSE(world.services.status().pendingSince);
    EXPECT_EQ(world.services.status().storeProblem, "");
    world.services.poll();
    EXPECT_EQ(told, 0) << "it never waited";

    for (const bool writtenByPoll : {true, false}) {
        SCOPED_TRACE(writtenByPoll);
        told = 0;
        {
            SQLite::Database other(store.string(), SQLite::OPEN_READWRITE, 1000);
            other.exec("BEGIN IMMEDIATE");
            const std::uint64_t then = world.clock.nowMilliseconds();
            world.store().set("choice", writtenByPoll ? "2" : "3");
            world.clock.setNow(then + 5000);
            world.store().set("choice", writtenByPoll ? "4" : "5");
            EXPECT_EQ(world.services.status().pendingSince, then);
            EXPECT_NE(world.services.status().storeProblem.find("locked"), std::string::npos)
                << world.services.status().storeProblem;
            world.services.poll();
            EXPECT_EQ(told, 0);
        }
        if (!writtenByPoll) {
            world.store().set("another", "1");
            EXPECT_EQ(told, 0) << "in the middle of what the application does";
            EXPECT_FALSE(world.services.status().pendingSince);
        }
        EXPECT_TRUE(world.pollUntil([&] { return told > 0; }));
        world.services.poll();
        EXPECT_EQ(told, 1);
        EXPECT_EQ(World(store).store().get("choice"), writtenByPoll ? "4" : "5");
        EXPECT_EQ(world.services.status().storeProblem, "");
    }
}

TEST_F(ServicesStatus, LogsADecisionInWhichNothingWasDecided) {
    World world(store, at("http://127.0.0.1:1"));
    const Runtime runtime(world.services.platform());
    VXMobilePrivacy& engine = VXMobilePrivacy::sharedInstance();
    const auto lines = [&] { return world.log.count("names no category and no vendor", 4); };
    engine.setSiteID({.site = 12, .privacy = 5});
    EXPECT_EQ(lines(), 0U);
    engine.acceptAllConsent();
    EXPECT_EQ(lines(), 1U);
    engine.saveConsent({{"PRIVACY_CAT_1", "1"}});
    engine.saveConsent({{"PRIVACY_CAT_1", "1"}});
    engine.saveConsent({{"PRIVACY_VEN_1", "0"}});
    engine.resetSavedConsent();
    engine.propagateConsent(nullptr);
    EXPECT_EQ(lines(), 1U);
    engine.refuseAllConsent(); // what was saved before does not hide it
    EXPECT_EQ(lines(), 2U);
}

TEST_F(ServicesStatus, CountsTheBeaconsThatWait) {
    std::atomic<int> answer = 503;
    const LocalServer collector(
        [&](const httplib::Request&, httplib::Response& response) { response.status = answer; });
    World world(store, at(collector.host()));
    const Runtime runtime(world.services.platform());
    const std::uint64_t then = world.clock.nowMilliseconds();
    VXMobilePrivacy::sharedInstance().viewConsent();
    world.clock.setNow(then + 1000);
    VXMobilePrivacy::sharedInstance().viewConsent();
    Status status = world.services.status();
    EXPECT_EQ(status.waitingBeacons, 2U);
    EXPECT_EQ(status.oldestBeacon, then);
    EXPECT_EQ(status.networkProblem, "");

    EXPECT_TRUE(world.pollUntil([&] { return !world.services.status().networkProblem.empty(); }));
    status = world.services.status();
    EXPECT_EQ(status.networkProblem.find(collector.host()), 0U) << status.networkProblem;
    EXPECT_NE(status.networkProblem.find(": HTTP 503"), std::string::npos);
    EXPECT_EQ(status.waitingBeacons, 2U);

    answer = 200;
    world.clock.setNow(then + 10'000'000); // when all may be tried again
    EXPECT_TRUE(world.pollUntil([&] { return world.services.status().waitingBeacons == 0; }));
    EXPECT_FALSE(world.services.status().oldestBeacon);
}

TEST_F(ServicesStatus, NamesEachDocumentsVersionAndOrigin) {
    LocalServer server([&](const httplib::Request& request, httplib::Response& response) {
        if (request.path == "/missing")
            response.status = 404;
        else if (request.path == "/unchanged")
            response.status = 304; // from what? nobody has it
        else
            response.set_content(R"({"version":7})", "application/json");
    });
    Settings settings = at(server.host());
    settings.packaged = directory / "";
    writeFile(directory / "shipped.json", R"({"version":3})");
    World world(store, settings);
    const Runtime runtime(world.services.platform());
    EXPECT_TRUE(world.services.status().documents.empty());

    auto& files = VXConfigurationFileFactory::sharedInstance();
    files.addConfigurationFile("downloaded", "version", server.host() + "/");
    files.addConfigurationFile("missing", "version", server.host() + "/missing");
    files.addConfigurationFile("shipped", "version");
    files.addConfigurationFile("unchanged", "version", server.host() + "/unchanged");
    const auto documents = [&] { return world.services.status().documents; };
    ASSERT_EQ(documents().size(), 4U);
    EXPECT_EQ(documents()[0].origin, Origin::Nowhere);
    EXPECT_NE(documents()[0].problem.find("downloaded.json: No such file"), std::string::npos)
        << documents()[0].problem;

    EXPECT_TRUE(world.pollUntil([&] {
        return documents()[0].version == 7 &&
               documents()[1].problem.find("HTTP 404") != std::string::npos &&
               documents()[3].problem.find("HTTP 304") != std::string::npos;
    }));
    EXPECT_EQ(documents()[0].name, "downloaded");
    EXPECT_EQ(documents()[0].origin, Origin::Downloaded);
    EXPECT_EQ(documents()[0].problem, "");
    EXPECT_EQ(documents()[1].origin, Origin::Nowhere);
    EXPECT_EQ(documents()[2].name, "shipped");
    EXPECT_EQ(documents()[2].version, 3);
    EXPECT_EQ(documents()[2].origin, Origin::Packaged);
    EXPECT_EQ(documents()[2].problem, "");
}

} // namespace vx::services::test
