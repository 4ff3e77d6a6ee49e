#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/services/SenderTest.h"

namespace vx::services::test {

namespace {

using httplib::Request;
using httplib::Response;

} // namespace

class OutboxTest : public SenderTest {
protected:
    void sendNumbers(World& world, const std::string& url, int first, int last) {
        StoreTransaction transaction(world.store());
        for (int number = first; number <= last; ++number)
            send(world, url, std::to_string(number));
        transaction.commit();
    }
};

// The oldest ones stay while any number behind them leaves, in this process and in the next.
TEST_F(OutboxTest, RequestsLeaveFromTheMiddle) {
    std::atomic<bool> broken = true;
    LocalServer server([&](const Request& request, Response& response) {
        response.status = broken && request.body == "0" ? 500 : 200;
    });
    {
        World world(store);
        sendNumbers(world, server.host() + "/", 0, 40);
        EXPECT_TRUE(world.pollUntil([&] { return waiting() == 1; }));
    }
    {
        World world(store);
        for (int i = 0; i < 4; ++i)
            send(world, "http://127.0.0.1:1/old", std::to_string(i));
        sendNumbers(world, server.host() + "/new", 1, 40);
        EXPECT_TRUE(world.pollUntil([&] { return waiting() == 5; }));
    }
    broken = false;
    World world(store);
    world.clock.setNow(world.clock.nowMilliseconds() + 24 * kHour);
    sendNumbers(world, server.host() + "/newer", 1, 40);
    EXPECT_TRUE(world.pollUntil([&] { return waiting() == 4; }));
    EXPECT_EQ(inFile("SELECT count(*) FROM outbox WHERE url LIKE '%/old'"), 4);
}

// A collector that keeps its callers waiting, and counts them.
class SlowServer {
public:
    void answerAll() {
        answering_ = true;
        answering_.notify_all();
    }
    int waiting() const { return waiting_; }
    int most() const { return most_; }
    std::string url(int address) const { return server_.host() + "/" + std::to_string(address); }
    std::size_t answered() { return server_.requests().size(); }

private:
    void take() {
        most_ = std::max<int>(most_, ++waiting_);
        answering_.wait(false);
        --waiting_;
    }

    std::atomic<bool> answering_ = false;
    std::atomic<int> waiting_ = 0;
    std::atomic<int> most_ = 0;
    LocalServer server_{[this](const Request&, Response&) { take(); },
                        [] {
                            auto server = std::make_unique<httplib::Server>();
                            server->new_task_queue = [] { return new httplib::ThreadPool(32); };
                            return server;
                        }};
};

TEST_F(OutboxTest, EightAreUnderWayAndTheOldestOfTheOthersIsDropped) {
    SlowServer server;
    World world(store);
    {
        StoreTransaction transaction(world.store());
        for (int i = 0; i < 1000; ++i)
            send(world, server.url(i), std::to_string(i));
        transaction.commit();
    }
    EXPECT_TRUE(world.pollUntil([&] { return server.waiting() == 8; }));
    sendNumbers(world, server.url(1000), 1000, 1001);
    EXPECT_EQ(waiting(), 1000);
    EXPECT_EQ(inFile("SELECT count(*) FROM outbox WHERE CAST(body AS INTEGER) < 8"), 8);
    EXPECT_EQ(
        inFile("SELECT min(CAST(body AS INTEGER)) FROM outbox WHERE CAST(body AS INTEGER) > 7"),
        10);
    server.answerAll();
    EXPECT_TRUE(world.pollUntil([&] { return waiting() == 0; }));
    EXPECT_EQ(server.most(), 8);
    EXPECT_EQ(server.answered(), 1000U);
}

TEST_F(OutboxTest, WhatCannotBeStoredIsPostedFromMemory) {
    std::atomic<bool> busy = true;
    LocalServer server([&](const Request& request, Response& response) {
        response.status = busy && request.body == "kept" ? 503 : 200;
    });
    const std::string url = server.host() + "/";
    writeFile(store.parent_path(), "a file stands where the directory should be");
    World world(store);
    {
        StoreTransaction dropped(world.store());
        send(world, url, "never");
        world.services.poll();
    }
    send(world, url, "delivered");
    EXPECT_TRUE(world.pollUntil([&] { return server.requests().size() == 1; }));
    send(world, url, "kept");
    EXPECT_TRUE(world.pollUntil([&] { return world.log.count("is tried again") == 1; }));
    EXPECT_EQ(bodies(server), (std::vector<std::string>{"delivered", "kept"}));

    std::filesystem::remove(store.parent_path());
    world.store().set("anything", "else");
    EXPECT_EQ(waiting(), 1);
    EXPECT_EQ(inFile("SELECT count(*) FROM outbox WHERE body = 'kept' AND attempts = 1"), 1);
    busy = false;
    world.clock.setNow(world.clock.nowMilliseconds() + 24 * kHour);
    EXPECT_TRUE(world.pollUntil([&] { return waiting() == 0; }));
    EXPECT_EQ(bodies(server), (std::vector<std::string>{"delivered", "kept", "kept"}));
}

} // namespace vx::services::test
