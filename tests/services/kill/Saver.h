#pragma once

#include <string>

namespace vx::services::test {

/// Saves one numbered save after the other on the store, posting beacons to `host`, and tells
/// standard output the number of each save that returned, a line each. Only ends by being killed.
[[noreturn]] void saveForEver(const std::string& store, const std::string& host);

/// Posts all beacons that wait in the store, then returns. False: some were left after half a
/// minute.
bool postAll(const std::string& store, const std::string& host);

} // namespace vx::services::test
