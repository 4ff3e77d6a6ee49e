#pragma once

#include <set>
#include <string>

#include "tests/support/LocalServer.h"

namespace vx::services::test {

/// The users that the beacons name which a collector got.
std::set<std::string> beaconUsers(tests::LocalServer& collector);

} // namespace vx::services::test
