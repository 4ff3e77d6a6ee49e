#include <algorithm>
#include <csignal>

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/studio/StudioProcess.h"
#include "tools/system/Descriptor.h"

namespace vx::tests {

TEST(StudioCommandLine, WhatCannotBeUsedIsOneLineAndStatusTwo) {
    const TemporaryDirectory directory;
    const std::vector<std::vector<std::string>> unusable = {
        {"--colour"},
        {"--port", "eighty"},
        {"--port", "65536"},
        {"--live"},
        {"--site", "3"},
        {"--vendor-list-host", "https://lists.example.com"},
        {"--config", directory / "absent.json"},
        {"--gvl", directory / "absent.json"},
        {"--live", "--site", "3", "--privacy", "4", "--gvl", "list.json"},
        {"--config", directory / ""},
        {"--config", writeFile(directory / "cut.json", "{\"information\": {")},
        {"--config", writeFile(directory / "array.json", "[1]")},
        {"--config",
         writeFile(directory / "mark.json", "\xEF\xBB\xBF{\"information\": {\"version\": 1}}")},
    };
    for (const std::vector<std::string>& options : unusable) {
        SCOPED_TRACE(options.back());
        ProgramRun run(studioCommand(directory, options));
        const std::string errors = run.errors();
        EXPECT_EQ(run.wait(), 2);
        if (options.front() == "--config") {
            EXPECT_NE(errors.find(options.back()), std::string::npos) << errors;
        }
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
        EXPECT_EQ(run.nextLine(), std::nullopt);
    }
}

TEST(StudioCommandLine, AConfigurationOfTheUsersIsServedAsItIs) {
    const TemporaryDirectory directory;
    StudioProcess studio(
        {"--config", writeFile(directory / "mine.json",
                               R"({"information":{"version":7},"categories":[{"ID":"3"}]})")});
    EXPECT_EQ(studio.valueOf("configuration"), "version 7");
    EXPECT_EQ(studio.post("accept")["application"]["answers"]["getAcceptedCategories"],
              Json::array({"PRIVACY_CAT_3"}));
}

TEST(StudioCommandLine, TheApplicationEndsWithAStudioThatWasKilled) {
    StudioProcess studio;
    const std::string title = studio.await("process", "Application started")["title"];
    const pid_t application = std::stoi(title.substr(title.rfind(' ')));
    const tools::system::Descriptor handle(
        static_cast<int>(syscall(SYS_pidfd_open, application, 0)));
    ASSERT_GE(handle.get(), 0);
    studio.program().signal(SIGKILL);
    pollfd ended = {handle.get(), POLLIN, 0};
    EXPECT_EQ(poll(&ended, 1, 20'000), 1);
    studio.expectEnd(-SIGKILL);
}

TEST(StudioCommandLine, WhatItWasStartedToIgnoreDoesNotEndIt) {
    StudioProcess studio({}, {"nohup"});
    studio.program().signal(SIGHUP);
    for (int launch = 2; launch < 5; ++launch)
        EXPECT_EQ(studio.post("relaunch")["process"]["launches"], launch);
}

} // namespace vx::tests
