#include "tests/studio/StudioProcess.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tools/studio/Spawn.h"

#include <gtest/gtest.h>

namespace vx::tests {

namespace {

using tools::studio::Descriptor;

std::pair<Descriptor, Descriptor> makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

bool readMore(const Descriptor& from, std::string& text) {
    char block[4096];
    const ssize_t count = read(from.get(), block, sizeof block);
    text.append(block, static_cast<std::size_t>(count > 0 ? count : 0));
    return count > 0;
}

std::vector<std::string> studioArguments(const TemporaryDirectory& directory,
                                         const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"studio", "--no-browser", "--port",
                                          "0",      "--store",      directory / "store.sqlite"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

} // namespace

TemporaryDirectory::TemporaryDirectory() {
    std::string name = std::filesystem::temp_directory_path() / "studio-test-XXXXXX";
    path_ = mkdtemp(name.data());
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

ProgramRun::ProgramRun(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), std::getenv("VXPRIVACY"));
    auto [output, outputEnd] = makePipe();
    auto [errors, errorsEnd] = makePipe();
    const Descriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
    pid_ = tools::studio::spawn(arguments, {nothing.get(), outputEnd.get(), errorsEnd.get()});
    output_ = std::move(output);
    errors_ = std::move(errors);
}

ProgramRun::~ProgramRun() {
    if (pid_ < 0)
        return;
    signal(SIGKILL);
    wait();
}

std::string ProgramRun::nextLine() {
    std::size_t end = 0;
    while ((end = text_.find('\n')) == std::string::npos)
        if (!readMore(output_, text_))
            return std::exchange(text_, {});
    const std::string line = text_.substr(0, end + 1);
    text_.erase(0, end + 1);
    return line;
}

std::string ProgramRun::errors() {
    std::string text;
    while (readMore(errors_, text))
        continue;
    return text;
}

void ProgramRun::signal(int number) const {
    kill(pid_, number);
}

int ProgramRun::wait() {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

StudioProcess::StudioProcess(std::vector<std::string> options)
    : program_(studioArguments(directory_, options)) {
    std::string line;
    while (transcript_.find("Ctrl-C") == std::string::npos && !(line = program_.nextLine()).empty())
        transcript_ += line;
    address_ = valueOf("page");
    address_.resize(address_.empty() ? 0 : address_.size() - 1); // without the slash
    token_ = valueOf("token");
}

StudioProcess::~StudioProcess() {
    program_.signal(SIGTERM);
    EXPECT_EQ(program_.wait(), expectedEnd_);
}

std::string StudioProcess::valueOf(std::string_view field) const {
    const std::string label = "\n  " + std::string(field) + " ";
    const std::size_t found = transcript_.find(label);
    if (found == std::string::npos)
        return {};
    const std::size_t begin = transcript_.find_first_not_of(' ', found + label.size());
    return transcript_.substr(begin, transcript_.find('\n', begin) - begin);
}

httplib::Client StudioProcess::client() const {
    httplib::Client client(address_);
    client.set_read_timeout(std::chrono::seconds(30));
    return client;
}

Json StudioProcess::post(const std::string& action, const std::string& body) {
    const auto result = client().Post("/api/" + action, {{"X-Studio-Token", token_}}, body,
                                      "application/x-www-form-urlencoded"); // as curl says it is
    return result ? Json::parse(result->body, nullptr, false) : Json();
}

Json StudioProcess::get(const std::string& path) {
    const auto result = client().Get("/api/" + path);
    return result ? Json::parse(result->body, nullptr, false) : Json();
}

Json StudioProcess::await(const std::string& kind, const std::string& title, std::uint64_t after) {
    Json found;
    std::string text;
    const auto take = [&](const char* data, std::size_t size) {
        text.append(data, size);
        std::size_t end = 0;
        while (found.is_null() && (end = text.find("\n\n")) != std::string::npos) {
            const std::size_t begin = text.find("data: ");
            const Json entry =
                begin < end ? Json::parse(text.substr(begin + 6, end - begin - 6)) : Json::object();
            text.erase(0, end + 2);
            if (entry.value("kind", "") == kind &&
                entry.value("title", "").find(title) != std::string::npos)
                found = entry;
        }
        return found.is_null();
    };
    client().Get("/api/events", {{"Last-Event-ID", std::to_string(after)}}, take);
    return found;
}

std::uint64_t StudioProcess::now() {
    const Json entries = get("timeline");
    return entries.empty() ? 0 : entries.back().value("id", std::uint64_t{0});
}

std::vector<std::string> StudioProcess::titles(const std::string& kind, std::uint64_t after) {
    std::vector<std::string> titles;
    for (const Json& entry : get("timeline?after=" + std::to_string(after)))
        if (entry.value("kind", "") == kind)
            titles.push_back(entry.value("title", ""));
    return titles;
}

} // namespace vx::tests
