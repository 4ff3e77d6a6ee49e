#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "vxprivacy/platform/foundation/OrderedDictionary.h"

// The numbered saves that the killed process makes one after the other.

namespace vx::services::test {

using Entries = std::map<std::string, std::string>;

/// When the save of this number is made, in milliseconds since 1970.
std::uint64_t timeOfSave(std::uint64_t number);
/// The number of the save that `entries` show as the last one; 0 when there was none.
std::uint64_t lastSave(const Entries& entries);

/// What the save of this number saves: neighbours differ in every value and in length.
ConsentDictionary consentOfSave(std::uint64_t number);
/// What the store must hold after this many saves, and nothing else.
Entries entriesAfter(std::uint64_t number);

/// The user that the beacon of the save of this number names.
std::string userOfSave(std::uint64_t number);

} // namespace vx::services::test
