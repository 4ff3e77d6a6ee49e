#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <httplib.h>

#include "tests/support/ProgramRun.h"
#include "tests/support/TestFiles.h"
#include "tools/studio/shared/Json.h"

namespace vx::tests {

using tools::studio::Json;

/// The texts by their keys in an answer's list of pairs, such as the store's entries.
std::map<std::string, std::string> textsIn(const Json& pairs);

/// The command line of `vxprivacy studio` on a store in the directory, with these options.
std::vector<std::string> studioCommand(const TemporaryDirectory& directory,
                                       const std::vector<std::string>& options);

/// A store that outlives the studio.
struct ExistingStore {
    explicit ExistingStore(std::string name) : file(std::move(name)) {}
    std::string file;
};

/// `vxprivacy studio` on a store of its own, driven as curl would drive it.
class StudioProcess {
public:
    /// `around` is a program that runs it, if one is to.
    explicit StudioProcess(std::vector<std::string> options = {},
                           std::vector<std::string> around = {});
    StudioProcess(const ExistingStore& store, std::vector<std::string> options);
    /// Ends it; a studio that does not end as expected fails the test.
    ~StudioProcess();
    /// How it is to end: the exit status, or minus the signal.
    void expectEnd(int status) { expectedEnd_ = status; }

    const std::string& transcript() const { return transcript_; }
    std::string valueOf(std::string_view field) const;
    /// 127.0.0.1:PORT of the "page" or the "backend".
    std::string authority(std::string_view server) const;
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
    void readTranscript();

    TemporaryDirectory directory_;
    ProgramRun program_;
    std::string transcript_;
    std::string address_;
    std::string token_;
    int expectedEnd_ = 0;
};

} // namespace vx::tests
