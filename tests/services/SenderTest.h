#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/services/TestServices.h"
#include "tests/support/LocalServer.h"

namespace vx::services::test {

inline constexpr std::uint64_t kSecond = 1000; // milliseconds
inline constexpr std::uint64_t kHour = 3600 * kSecond;

/// A store of beacons, looked into from outside.
class SenderTest : public testing::Test {
protected:
    static void send(World& world, const std::string& url, const std::string& body);
    /// What `query` finds in the file: what a fresh process would find.
    std::int64_t inFile(const std::string& query) const;
    std::int64_t waiting() const { return inFile("SELECT count(*) FROM outbox"); }
    static std::vector<std::string> bodies(LocalServer& server);

    TemporaryDirectory directory;
    const std::filesystem::path store = directory / "private/store.db";
};

} // namespace vx::services::test
