#pragma once

#include <filesystem>
#include <string>

#include "vxprivacy/platform/core/VXConfigurationFile.h"

namespace vx::services {

/// The copy of a configuration file's document that ships with the application.
struct PackagedCopy {
    std::string path; ///< where it lies, or should
    bool isThere = false;
    std::string text;
    std::string problem; ///< why it is of no use; empty where nothing was found wrong with it
};

/// Reads the copy of `file` in its own directory, or in `usual` where it names none.
PackagedCopy readPackagedCopy(const VXConfigurationFile& file, const std::filesystem::path& usual);

} // namespace vx::services
