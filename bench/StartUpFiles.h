#pragma once

#include <filesystem>
#include <string>

namespace vx::bench {

/// What the start-up programs find: a store with 2,200 saved entries and the offline copies of a
/// privacy configuration and a vendor list, and the two documents as files of their own.
struct StartUpFiles {
    static StartUpFiles make();

    std::filesystem::path directory;
};

} // namespace vx::bench
