#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// What a store's file holds at this moment, read from the file itself: "entries", pairs of key and
/// value by key, and "waitingBeacons". Nothing when it cannot be read; of no file: that it is
/// empty.
std::optional<Json> storedState(const std::filesystem::path& store);
/// The documents that it keeps, by file name; of vendor lists those of format 3, or those of format
/// 2.
std::map<std::string, std::string> storedDocuments(const std::filesystem::path& store,
                                                   bool inFormat3);

} // namespace vx::tools::studio
