#include <csignal>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "tests/studio/StudioProcess.h"

namespace vx::tests {

namespace {

pid_t applicationOf(StudioProcess& studio, std::uint64_t after = 0) {
    const std::string title = studio.await("process", "Application started", after)["title"];
    return std::stoi(title.substr(title.rfind(' ')));
}

/// A studio whose application is stopped, with a hit on its way that fills the pipe to it.
struct Stopped {
    StudioProcess studio;
    pid_t application = applicationOf(studio);
    std::string error; // the hit's
    std::thread hit;

    Stopped() {
        ::kill(application, SIGSTOP);
        hit = std::thread([this] {
            const Json large = {{"name", std::string(4'000'000, 'h')}};
            const Json answer = studio.post("hit", large.dump());
            error = answer.is_object() ? answer.value("error", "") : "the studio ended";
        });
    }
    ~Stopped() {
        if (hit.joinable())
            hit.join();
    }
};

} // namespace

TEST(StudioStopped, WhatGetsNoAnswerSaysSoAndReadingGoesOn) {
    Stopped stopped;
    StudioProcess& studio = stopped.studio;
    EXPECT_EQ(studio.get("configuration"), studio.get("sample"));
    EXPECT_EQ(studio.post("configuration", studio.get("sample").dump())["version"], 2);
    EXPECT_EQ(studio.post("network", R"({"on": false})")["network"]["on"], false);
    EXPECT_EQ(studio.post("accept").value("error", ""),
              "the application is stopped and does not answer");
    stopped.hit.join();
    EXPECT_EQ(stopped.error, "the application is stopped and does not answer");

    const std::uint64_t before = studio.now();
    ::kill(stopped.application, SIGCONT); // it does what it was told meanwhile
    EXPECT_FALSE(studio.await("hit", "hhh", before).is_null());
    EXPECT_EQ(studio.post("refuse")["application"]["engine"]["privacyState"], 2);
}

TEST(StudioStopped, KillAndRelaunchGetThrough) {
    for (const char* action : {"kill", "relaunch", "reset"}) {
        SCOPED_TRACE(action);
        Stopped stopped;
        const Json state = stopped.studio.post(action);
        EXPECT_EQ(state["process"]["launches"], 2);
        EXPECT_EQ(state["process"]["running"], true);
        EXPECT_TRUE(stopped.studio.post("accept").contains("application"));
    }
}

TEST(StudioStopped, TheStudioEndsAllTheSame) {
    Stopped stopped;
    stopped.studio.program().signal(SIGTERM); // the studio's end is awaited, and is 0
}

TEST(StudioApplication, ItsEndIsCollectedAtOnceAndTold) {
    StudioProcess studio;
    const pid_t application = applicationOf(studio);
    const std::uint64_t before = studio.now();
    ::kill(application, SIGKILL);
    EXPECT_FALSE(studio.await("process", "ended unexpectedly", before).is_null());
    EXPECT_NE(::kill(application, 0), 0); // not even a zombie
    EXPECT_EQ(studio.get("state")["process"]["running"], false);
    EXPECT_EQ(studio.post("accept").value("error", ""), "the application is not running");
    EXPECT_EQ(studio.post("relaunch")["process"]["running"], true);
    EXPECT_EQ(studio.titles("process", before).size(), 2u); // its end and the new start
}

} // namespace vx::tests
