#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace vx::tools::studio {

/// What the command line says.
struct Options {
    /// The privacy configuration to serve; empty: the one published last, else the sample.
    std::filesystem::path config;
    /// The application's store, in the mode that it begins in; empty: in the user's state
    /// directory.
    std::filesystem::path store;
    /// Of the page; the next free one is taken when it is in use. 0: any.
    int port = 8480;
    bool noBrowser = false;
    /// Begin in IAB mode, in place of category mode.
    bool iab = false;
    /// The vendor list to serve; empty: the sample.
    std::filesystem::path gvl;
    /// Real hosts in place of the development backend.
    bool live = false;
    std::int32_t site = 12;
    std::int32_t privacy = 5;
};

} // namespace vx::tools::studio
