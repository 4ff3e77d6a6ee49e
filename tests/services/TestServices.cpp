#include "tests/services/TestServices.h"

#include <algorithm>
#include <utility>

#include "tests/support/WaitUntil.h"

namespace vx::services::test {

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

World::World(const std::filesystem::path& store, Settings settings)
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

} // namespace vx::services::test
