#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "tools/studio/shared/Mode.h"

namespace vx::tools::studio {

/// The world that the command line asks for.
struct WorldOptions {
    /// The privacy configuration to serve; empty: the one published last, else the sample.
    std::filesystem::path config;
    /// The application's store, in the mode that it begins in; empty: in the user's state
    /// directory.
    std::filesystem::path store;
    /// The mode that the application begins in.
    Mode mode = Mode::Category;
    /// The vendor list to serve; empty: the sample.
    std::filesystem::path gvl;
    /// Real hosts in place of the development backend.
    bool live = false;
    /// The real host of the vendor list; empty: there is none.
    std::string vendorListHost;
    std::int32_t site = 12;
    std::int32_t privacy = 5;
};

} // namespace vx::tools::studio
