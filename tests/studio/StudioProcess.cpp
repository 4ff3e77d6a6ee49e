#include "tests/studio/StudioProcess.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

namespace vx::tests {

namespace {

std::vector<std::string> onAnyPort(std::vector<std::string> options) {
    options.insert(options.end(), {"--port", "0"});
    return options;
}

std::vector<std::string> joined(std::vector<std::string> first, std::vector<std::string> second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace

std::map<std::string, std::string> textsIn(const Json& pairs) {
    std::map<std::string, std::string> texts;
    for (const Json& entry : pairs)
        texts[entry[0]] = entry[1];
    return texts;
}

std::vector<std::string> studioCommand(const TemporaryDirectory& directory,
                                       const std::vector<std::string>& options) {
    std::vector<std::string> command = {std::getenv("VXPRIVACY"), "studio", "--no-browser",
                                        "--store", directory / "store.sqlite"};
    command.insert(command.end(), options.begin(), options.end());
    return command;
}

StudioProcess::StudioProcess(std::vector<std::string> options, std::vector<std::string> around)
    : program_(
          joined(std::move(around), studioCommand(directory_, onAnyPort(std::move(options))))) {
    readTranscript();
}

StudioProcess::StudioProcess(const ExistingStore& store, std::vector<std::string> options)
    : program_(joined({std::getenv("VXPRIVACY"), "studio", "--no-browser", "--store", store.file},
                      onAnyPort(std::move(options)))) {
    readTranscript();
}

void StudioProcess::readTranscript() {
    std::signal(SIGPIPE, SIG_IGN); // the studio may close a connection that is still written to
    std::optional<std::string> line;
    while (transcript_.find("Ctrl-C") == std::string::npos && (line = program_.nextLine()))
        transcript_ += *line + '\n';
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

std::string StudioProcess::authority(std::string_view server) const {
    const std::string line = valueOf(server); // "http://127.0.0.1:PORT/ and more"
    return line.substr(7, line.find_first_of("/ ", 7) - 7);
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
