#include <algorithm>
#include <atomic>
#include <string>
#include <vector>

#include "services/core/RetryPolicy.h"
#include "tests/services/LocalServer.h"
#include "tests/services/Support.h"
#include "vxprivacy/platform/core/VXNotifications.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

namespace vx::services::test {

namespace {

using namespace std::string_literals;
using httplib::Request;
using httplib::Response;

constexpr std::uint64_t kSecond = 1000;
constexpr std::uint64_t kHour = 3600 * kSecond;

class Sender : public testing::Test {
protected:
    static void send(World& world, const std::string& url, const std::string& body) {
        world.services.platform().notifications.post(
            {std::string(kVXNotification_HTTPRequest), nullptr,
             Notification::UserInfo{{std::string(kVXUserInfo_URLKey), url},
                                    {std::string(kVXUserInfo_POSTData), body}}});
    }
    // What `query` finds in the file: what a fresh process would find.
    std::int64_t inFile(const std::string& query) const {
        SQLite::Database file(store.string(), SQLite::OPEN_READWRITE, 1000);
        return file.execAndGet(query).getInt64();
    }
    std::int64_t waiting() const { return inFile("SELECT count(*) FROM outbox"); }
    static std::vector<std::string> bodies(LocalServer& server) {
        std::vector<std::string> bodies;
        for (const Request& request : server.requests())
            bodies.push_back(request.body);
        return bodies;
    }

    TemporaryDirectory directory;
    const std::filesystem::path store = directory / "private/store.db";
};

} // namespace

TEST_F(Sender, PostsInOrderAndForgetsWhatWasTaken) {
    LocalServer server([](const Request&, Response& response) { response.status = 204; });
    World world(store);
    const std::vector<std::string> sent{"{}", "", "a\0b"s, std::string(1 << 20, 'x'), "last"};
    for (const std::string& body : sent)
        send(world, server.host() + "/privacy-consent/", body);
    EXPECT_TRUE(world.pollUntil([&] { return waiting() == 0; }));
    EXPECT_EQ(bodies(server), sent);
    for (const Request& request : server.requests()) {
        EXPECT_EQ(request.method + " " + request.target, "POST /privacy-consent/");
        EXPECT_EQ(request.get_header_value("Content-Type"), "application/json");
        EXPECT_EQ(request.get_header_value("User-Agent"), "VXPrivacy");
    }
}

TEST_F(Sender, TheStatusDecidesWhetherARequestIsTriedAgain) {
    enum Fate { Taken, Dropped, TriedAgain };
    const std::pair<int, Fate> cases[] = {
        {200, Taken},      {202, Taken},      {204, Taken},      {400, Dropped},
        {404, Dropped},    {410, Dropped},    {429, TriedAgain}, {500, TriedAgain},
        {503, TriedAgain}, {599, TriedAgain}, {301, TriedAgain}, {307, TriedAgain},
    };
    for (const auto& [status, fate] : cases) {
        SCOPED_TRACE(status);
        std::atomic<int> answer = status;
        LocalServer server([&](const Request&, Response& response) {
            response.set_header("Location", "/elsewhere");
            response.status = answer;
        });
        World world(store);
        send(world, server.host() + "/", "body");
        ASSERT_EQ(waiting(), 1) << "before it is posted";
        EXPECT_TRUE(world.pollUntil(
            [&] { return waiting() == 0 || inFile("SELECT attempts FROM outbox") == 1; }));
        EXPECT_EQ(waiting(), fate == TriedAgain);
        EXPECT_EQ(world.log.count("dropped", 4), fate == Dropped) << world.log.text();
        answer = 200;
        world.clock.setNow(world.clock.nowMilliseconds() + kSecond);
        EXPECT_TRUE(world.pollUntil([&] { return waiting() == 0; }));
        EXPECT_EQ(server.requests().size(), fate == TriedAgain ? 2U : 1U);
    }
}

TEST_F(Sender, WaitsOutlastTheProcessAndAreThoseTheServerAskedFor) {
    const std::string url = "http://127.0.0.1:1/"; // nobody listens there
    std::atomic<bool> busy = true;
    LocalServer server([&](const Request&, Response& response) {
        if (busy)
            response.set_header("Retry-After", "7200");
        response.status = busy ? 503 : 200;
    });
    {
        World world(store);
        send(world, url, "no answer");
        send(world, server.host() + "/", "first");
        send(world, server.host() + "/", "second");
        EXPECT_TRUE(world.pollUntil(
            [&] { return inFile("SELECT count(*) FROM outbox WHERE attempts = 1") == 2; }));
        const std::string now = std::to_string(world.clock.nowMilliseconds());
        const std::string wait = "SELECT max(next_try) - " + now + " FROM outbox WHERE url ";
        EXPECT_LE(inFile(wait + "= '" + url + "'"), kSecond);
        EXPECT_EQ(inFile(wait + "<> '" + url + "'"), 7200 * kSecond);
    }
    busy = false;
    World world(store);
    world.clock.setNow(world.clock.nowMilliseconds() + 7199 * kSecond);
    EXPECT_TRUE(world.pollUntil([&] { return inFile("SELECT max(attempts) FROM outbox") == 2; }));
    EXPECT_EQ(bodies(server), std::vector<std::string>{"first"}) << "the second waits behind it";
    world.clock.setNow(world.clock.nowMilliseconds() + kSecond);
    EXPECT_TRUE(world.pollUntil([&] { return waiting() == 1; }));
    EXPECT_EQ(bodies(server), (std::vector<std::string>{"first", "first", "second"}));
}

TEST_F(Sender, ARequestThatBreaksTheServerLetsOthersPass) {
    LocalServer server([](const Request& request, Response& response) {
        response.status = request.body == "poison" ? 500 : 200;
    });
    World world(store);
    for (const char* body : {"poison", "good", "also good"})
        send(world, server.host() + "/", body);
    EXPECT_TRUE(world.pollUntil([&] { return server.requests().size() >= 3 && waiting() == 1; }));
}

TEST_F(Sender, TooManyAndTooOldRequestsAreDropped) {
    const SilentServer server;
    {
        World world(store);
        StoreTransaction transaction(world.store());
        for (int i = 0; i < 1003; ++i)
            send(world, server.host(), std::to_string(i));
        transaction.commit();
        EXPECT_EQ(waiting(), 1000);
        EXPECT_EQ(inFile("SELECT min(CAST(body AS INTEGER)) FROM outbox"), 3);
        EXPECT_EQ(world.log.count("oldest is dropped", 4), 3U);
    }
    World world(store);
    world.clock.setNow(world.clock.nowMilliseconds() + 7 * 24 * kHour);
    world.services.poll();
    EXPECT_EQ(waiting(), 1000) << "seven days old and no older";
    world.clock.setNow(world.clock.nowMilliseconds() + 1);
    world.services.poll();
    EXPECT_EQ(waiting(), 0);
    EXPECT_EQ(world.log.count("7 days", 4), 1000U);
}

TEST_F(Sender, WhatARolledBackScopeSentIsNeverPosted) {
    LocalServer server([](const Request&, Response&) {});
    World world(store);
    {
        StoreTransaction transaction(world.store());
        send(world, server.host() + "/", "never");
    }
    send(world, server.host() + "/", "sent");
    EXPECT_TRUE(world.pollUntil([&] { return !server.requests().empty() && waiting() == 0; }));
    EXPECT_EQ(bodies(server), std::vector<std::string>{"sent"});
}

TEST_F(Sender, NothingIsSentInTheClearToOtherMachines) {
    World world(store);
    send(world, "http://192.0.2.1/", "body");
    EXPECT_EQ(world.log.count("192.0.2.1", 4), 1U) << world.log.text();
    EXPECT_EQ(waiting(), 0);
}

TEST_F(Sender, TheApplicationIsWokenForARetry) {
    std::atomic<bool> failing = true;
    LocalServer server(
        [&](const Request&, Response& response) { response.status = failing ? 503 : 200; });
    std::atomic<int> wakeUps = 0;
    World world(store);
    world.services.setWakeUp([&] { ++wakeUps; });
    send(world, server.host() + "/", "body");
    EXPECT_TRUE(world.pollUntil([&] { return inFile("SELECT attempts FROM outbox") == 1; }));
    const int before = wakeUps;
    EXPECT_TRUE(waitUntil([&] { return wakeUps > before; }));
    world.services.setWakeUp(nullptr);
}

TEST(RetryPolicy, WaitsGrowToAnHourAndAServerMayAskForADay) {
    RetryPolicy policy;
    for (const auto& [attempts, bound] : {std::pair{1, kSecond},
                                          {2, 2 * kSecond},
                                          {5, 16 * kSecond},
                                          {12, 2048 * kSecond},
                                          {13, kHour},
                                          {1'000'000, kHour}}) {
        std::uint64_t longest = 0;
        for (int i = 0; i < 1000; ++i)
            longest = std::max(longest, policy.wait(attempts, {}));
        EXPECT_LE(longest, bound) << attempts;
        EXPECT_GT(longest, bound / 2) << attempts;
    }
    EXPECT_EQ(policy.wait(1, 5 * kHour), 5 * kHour);
    EXPECT_EQ(policy.wait(1, 48 * kHour), 24 * kHour);
}

TEST(RetryPolicy, ReadsRetryAfter) {
    const std::uint64_t now = 784111777 * kSecond; // Sun, 06 Nov 1994 08:49:37 GMT
    const std::pair<const char*, std::optional<std::uint64_t>> cases[] = {
        {"", {}},
        {"120", 120 * kSecond},
        {"0", 0},
        {"-5", 0},
        {"99999999999999999999", 1'000'000 * kSecond},
        {"Sun, 06 Nov 1994 08:50:37 GMT", 60 * kSecond},
        {"Sunday, 06-Nov-94 08:50:37 GMT", 60 * kSecond},
        {"Sun Nov  6 08:50:37 1994", 60 * kSecond},
        {"Sun, 06 Nov 1994 08:49:00 GMT", 0},
        {"soon", {}},
    };
    for (const auto& [header, asked] : cases)
        EXPECT_EQ(retryAfter(header, now), asked) << header;
}

} // namespace vx::services::test
