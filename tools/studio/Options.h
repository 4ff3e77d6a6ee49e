#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace vx::tools::studio {

/// What the command line says.
struct Options {
    /// The privacy configuration to serve; empty: the one published last, else the sample.
    std::filesystem::path config;
    /// The application's store; empty: one in the user's state directory.
    std::filesystem::path store;
    /// Of the page; the next free one is taken when it is in use. 0: any.
    int port = 8480;
    bool noBrowser = false;
    /// Real hosts in place of the development backend.
    bool live = false;
    std::int32_t site = 12;
    std::int32_t privacy = 5;
};

/// Where the application keeps its store unless told: in $XDG_STATE_HOME or ~/.local/state.
std::filesystem::path defaultStore(const Options& options);

} // namespace vx::tools::studio
