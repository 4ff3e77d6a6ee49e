#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tools/studio/shared/Result.h"

namespace vx::tools::studio {

/// A vendor list as its host serves it: the list itself and the translations of its purposes.
struct ServedVendorList {
    std::int32_t version = 0;
    std::size_t vendors = 0; ///< those deleted included
    std::string name;        ///< one for each content; empty: the sample
    /// By file name: "vendor-list.json", "purposes-fr.json".
    std::map<std::string, std::string> documents;
};

/// The codes of the languages that it is translated into from English.
std::vector<std::string> languagesOf(const ServedVendorList& list);

/// What the host serves, one list for each format that an application may ask for.
struct ServedVendorLists {
    ServedVendorList format2;
    ServedVendorList format3;
};

/// The project's own.
ServedVendorLists sampleVendorLists();

/// The list in `file`, with what lies beside it as purposes-XX.json, or what is wrong with it.
/// Throws std::system_error when a file cannot be read.
Result<ServedVendorList> readVendorList(const std::filesystem::path& file);

} // namespace vx::tools::studio
