#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <string>
#include <vector>

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include "tests/services/SenderTest.h"
#include "tests/support/WaitUntil.h"

namespace vx::services::test {

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using httplib::Request;
using httplib::Response;

} // namespace

TEST_F(SenderTest, PostsInOrderAndForgetsWhatWasTaken) {
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

TEST_F(SenderTest, TheStatusDecidesWhetherARequestIsTriedAgain) {
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

TEST_F(SenderTest, WaitsOutlastTheProcessAndAreThoseTheServerAskedFor) {
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

TEST_F(SenderTest, AServerAsksForAWaitInSecondsOrByADate) {
    const auto date = [](std::chrono::seconds fromNow) {
        const std::time_t time = std::time(nullptr) + fromNow.count();
        char text[64];
        std::strftime(text, sizeof text, "%a, %d %b %Y %H:%M:%S GMT", std::gmtime(&time));
        return std::string(text);
    };
    struct Case {
        std::string header;
        std::uint64_t shortest, longest; // milliseconds
    };
    for (const Case& asked : {Case{"120", 120 * kSecond, 120 * kSecond},
                              {date(2h), kHour, 2 * kHour},
                              {date(-2h), 0, kSecond},
                              {"-5", 0, kSecond},
                              {"soon", 0, kSecond}}) {
        SCOPED_TRACE(asked.header);
        const LocalServer server([&](const Request&, Response& response) {
            response.set_header("Retry-After", asked.header);
            response.status = 503;
        });
        const std::filesystem::path fresh = directory / asked.header;
        World world(fresh);
        send(world, server.host() + "/", "body");
        EXPECT_TRUE(world.pollUntil([&] { return world.log.count("is tried again") == 1; }));
        SQLite::Database file(fresh.string(), SQLite::OPEN_READWRITE);
        const auto next = file.execAndGet("SELECT next_try FROM outbox").getInt64();
        const std::uint64_t wait = static_cast<std::uint64_t>(next) - world.clock.nowMilliseconds();
        EXPECT_GE(wait, asked.shortest);
        EXPECT_LE(wait, asked.longest);
    }
}

TEST_F(SenderTest, ANewRequestHurriesWhatWaitsUnlessTheServerAskedForTheWait) {
    for (const bool asks : {false, true}) {
        SCOPED_TRACE(asks);
        std::atomic<bool> busy = true;
        LocalServer server([&](const Request&, Response& response) {
            if (asks)
                response.set_header("Retry-After", "60");
            response.status = busy ? 503 : 200;
        });
        World world(directory / (asks ? "asks" : "says nothing"));
        const std::string url = server.host() + "/";
        send(world, url, "first");
        EXPECT_TRUE(world.pollUntil([&] { return world.log.count("again") == 1; }));
        world.clock.setNow(world.clock.nowMilliseconds() + 60 * kSecond);
        EXPECT_TRUE(world.pollUntil([&] { return world.log.count("again") == 2; }));
        busy = false;
        send(world, url, "second"); // while the first waits for hours
        EXPECT_TRUE(asks || world.pollUntil([&] { return server.requests().size() == 4; }));
        world.services.poll();
        EXPECT_EQ(server.requests().size(), asks ? 2U : 4U);
        EXPECT_EQ(server.requests().back().body, asks ? "first" : "second");
    }
}

TEST_F(SenderTest, ARequestThatBreaksTheServerLetsOthersPass) {
    LocalServer server([](const Request& request, Response& response) {
        response.status = request.body == "poison" ? 500 : 200;
    });
    World world(store);
    for (const char* body : {"poison", "good", "also good"})
        send(world, server.host() + "/", body);
    EXPECT_TRUE(world.pollUntil([&] { return server.requests().size() >= 3 && waiting() == 1; }));
}

TEST_F(SenderTest, TooManyAndTooOldRequestsAreDropped) {
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

TEST_F(SenderTest, WhatARolledBackScopeSentIsNeverPosted) {
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

TEST_F(SenderTest, NothingIsSentInTheClearToOtherMachines) {
    World world(store);
    send(world, "http://192.0.2.1/", "body");
    EXPECT_EQ(world.log.count("192.0.2.1", 4), 1U) << world.log.text();
    EXPECT_EQ(waiting(), 0);
}

TEST_F(SenderTest, TheApplicationIsWokenForARetry) {
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

TEST_F(SenderTest, AnEndlessAnswerHoldsNothingUp) {
    LocalServer server([](const Request& request, Response& response) {
        response.status = request.body == "taken" ? 200 : 500;
        response.set_chunked_content_provider("text/plain", [](std::size_t, auto& sink) {
            const std::string block(1 << 14, 'x');
            return sink.write(block.data(), block.size());
        });
    });
    World world(store);
    send(world, server.host() + "/", "not taken");
    send(world, server.host() + "/", "taken");
    EXPECT_TRUE(world.pollUntil([&] { return waiting() == 1; }));
    EXPECT_EQ(inFile("SELECT count(*) FROM outbox WHERE body = 'not taken'"), 1);
}

} // namespace vx::services::test
