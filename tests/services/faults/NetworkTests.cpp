#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/services/SenderTest.h"
#include "tests/services/faults/Faults.h"

// What becomes of the services where the system gives them nothing to work with.

namespace vx::services::test {

class NetworkFaults : public SenderTest {
protected:
    // Beacons are tried again soon on a clock that runs.
    bool allPosted(World& world) {
        return world.pollUntil([&] {
            world.clock.setNow(world.clock.nowMilliseconds() + 60'000);
            return waiting() == 0;
        });
    }

    LocalServer server{[](const httplib::Request&, httplib::Response&) {}};
};

// First libcurl cannot be loaded; once it is, it can get no descriptors of its own.
TEST_F(NetworkFaults, MissingDescriptorsHoldsNothingUp) {
    for (int time = 0; time < 2; ++time) {
        SCOPED_TRACE(time);
        {
            World world(store);
            send(world, server.host() + "/first", "body");
            const NoDescriptors exhausted;
            EXPECT_TRUE(world.pollUntil([&] { return world.log.count("is tried again") == 1; }))
                << world.log.text();
        }
        World world(store);
        {
            const NoDescriptors exhausted;
            send(world, server.host() + "/second", "body");
            EXPECT_TRUE(world.pollUntil([&] {
                return world.log.count("Nothing is downloaded or posted: libcurl", 4) == 1;
            })) << world.log.text();
        }
        EXPECT_TRUE(allPosted(world)) << world.log.text();
        EXPECT_EQ(world.log.count("", 4), 1U) << world.log.text();
    }
}

TEST_F(NetworkFaults, WithoutAThreadRequestsWait) {
    for (const bool recovers : {false, true}) {
        auto world = std::make_unique<World>(store);
        {
            const NoThreads exhausted;
            for (int i = 0; i < 3; ++i) {
                send(*world, server.host() + "/", "body");
                world->services.poll();
            }
            EXPECT_EQ(world->log.count("no thread", 4), 1U) << world->log.text();
        }
        if (!recovers)
            world.reset();
        else
            EXPECT_TRUE(allPosted(*world)) << world->log.text();
    }
    EXPECT_EQ(server.requests().size(), 6U);
}

TEST_F(NetworkFaults, ASilentNameServerHoldsNothingUp) {
    const SilentNameServer names;
    World world(store);
    send(world, "https://collector.example/", "body");
    EXPECT_TRUE(world.pollUntil([] { return SilentNameServer::isAsked(); }));
}

} // namespace vx::services::test
