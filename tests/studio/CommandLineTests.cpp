#include "tests/studio/StudioProcess.h"

#include <algorithm>
#include <csignal>
#include <fstream>

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace vx::tests {

namespace {

std::string write(const std::filesystem::path& file, const char* text) {
    std::ofstream(file) << text;
    return file;
}

} // namespace

TEST(StudioCommandLine, WhatCannotBeUsedIsOneLineAndStatusTwo) {
    const TemporaryDirectory directory;
    const std::vector<std::vector<std::string>> unusable = {
        {"--colour"},
        {"--port", "eighty"},
        {"--port", "65536"},
        {"--live"},
        {"--site", "3"},
        {"--config", directory / "absent.json"},
        {"--gvl", directory / "absent.json"},
        {"--live", "--site", "3", "--privacy", "4", "--gvl", "list.json"},
        {"--config", directory / ""},
        {"--config", write(directory / "cut.json", "{\"information\": {")},
        {"--config", write(directory / "array.json", "[1]")},
    };
    for (const std::vector<std::string>& options : unusable) {
        SCOPED_TRACE(options.back());
        std::vector<std::string> arguments = {"studio", "--no-browser", "--store",
                                              directory / "store.sqlite"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        ProgramRun run(arguments);
        const std::string errors = run.errors();
        EXPECT_EQ(run.wait(), 2);
        if (options.front() == "--config") {
            EXPECT_NE(errors.find(options.back()), std::string::npos) << errors;
        }
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
        EXPECT_EQ(run.nextLine(), "");
    }
}

TEST(StudioCommandLine, AConfigurationOfTheUsersIsServedAsItIs) {
    const TemporaryDirectory directory;
    StudioProcess studio(
        {"--config", write(directory / "mine.json",
                           R"({"information":{"version":7},"categories":[{"ID":"3"}]})")});
    EXPECT_EQ(studio.valueOf("configuration"), "version 7");
    EXPECT_EQ(studio.post("accept")["application"]["answers"]["getAcceptedCategories"],
              Json::array({"PRIVACY_CAT_3"}));
}

TEST(StudioCommandLine, TheApplicationEndsWithAStudioThatWasKilled) {
    StudioProcess studio;
    const std::string title = studio.await("process", "Application started")["title"];
    const pid_t application = std::stoi(title.substr(title.rfind(' ')));
    const tools::studio::Descriptor handle(
        static_cast<int>(syscall(SYS_pidfd_open, application, 0)));
    ASSERT_GE(handle.get(), 0);
    studio.program().signal(SIGKILL);
    pollfd ended = {handle.get(), POLLIN, 0};
    EXPECT_EQ(poll(&ended, 1, 20'000), 1);
    studio.expectEnd(-SIGKILL);
}

} // namespace vx::tests
