#include "tests/services/Support.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <thread>

namespace vx::services::test {

namespace fs = std::filesystem;

TemporaryDirectory::TemporaryDirectory() {
    std::string name = (fs::temp_directory_path() / "vxprivacy-XXXXXX").string();
    path_ = ::mkdtemp(name.data());
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void LogLines::log(std::string_view message, int level) {
    lines_.emplace_back(message, level);
}

std::size_t LogLines::count(std::string_view part, int level) const {
    return static_cast<std::size_t>(std::ranges::count_if(lines_, [&](const auto& line) {
        return line.second >= level && line.first.find(part) != std::string::npos;
    }));
}

std::string LogLines::text() const {
    std::string text;
    for (const auto& [message, level] : lines_)
        text += std::to_string(level) + " " + message + "\n";
    return text;
}

World::World(const fs::path& store, Settings settings)
    : services([&] {
          settings.store = store;
          settings.logger = &log;
          settings.clock = &clock;
          return std::move(settings);
      }()) {}

bool World::pollUntil(const std::function<bool()>& condition) {
    return waitUntil([&] {
        services.poll();
        return condition();
    });
}

bool waitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (std::chrono::steady_clock::now() < deadline) {
        if (condition())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

void writeFile(const fs::path& file, std::string_view text) {
    std::ofstream(file, std::ios::binary) << text;
}

std::string readFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace vx::services::test
