#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

#include "tools/studio/Descriptor.h"
#include "tools/studio/Json.h"

#include <httplib.h>

namespace vx::tests {

using tools::studio::Json;

/// A directory of its own, gone with the object.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    std::filesystem::path operator/(const char* name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

/// A run of the executable: its command line, what it printed, and how it ended.
class ProgramRun {
public:
    explicit ProgramRun(std::vector<std::string> arguments);
    ~ProgramRun();

    /// The next line of standard output; empty at its end.
    std::string nextLine();
    /// All that is left of standard error.
    std::string errors();
    void signal(int number) const;
    /// Waits for the end; gives the exit status, or minus the signal.
    int wait();

private:
    tools::studio::Descriptor output_;
    tools::studio::Descriptor errors_;
    pid_t pid_ = -1;
    std::string text_;
};

/// `vxprivacy studio` on a store of its own, driven as curl would drive it.
class StudioProcess {
public:
    explicit StudioProcess(std::vector<std::string> options = {});
    /// Ends it; a studio that does not end as expected fails the test.
    ~StudioProcess();
    /// How it is to end: the exit status, or minus the signal.
    void expectEnd(int status) { expectedEnd_ = status; }

    const std::string& transcript() const { return transcript_; }
    std::string valueOf(std::string_view field) const;
    ProgramRun& program() { return program_; }

    /// POST /api/ACTION with the token; the answer, which has "error" when it was refused.
    Json post(const std::string& action, const std::string& body = "");
    Json get(const std::string& path);
    httplib::Client client() const;

    /// The first entry of the timeline after `entry` of this kind whose title contains `title`,
    /// waited for; null when it does not come.
    Json await(const std::string& kind, const std::string& title, std::uint64_t after = 0);
    /// The number of the last entry.
    std::uint64_t now();
    /// The titles of a kind after `entry`.
    std::vector<std::string> titles(const std::string& kind, std::uint64_t after);

private:
    TemporaryDirectory directory_;
    ProgramRun program_;
    std::string transcript_;
    std::string address_;
    std::string token_;
    int expectedEnd_ = 0;
};

} // namespace vx::tests
