#include "tools/studio/Options.h"

#include <cstdlib>

namespace vx::tools::studio {

namespace {

std::filesystem::path stateDirectory() {
    const char* state = std::getenv("XDG_STATE_HOME");
    if (state && *state == '/')
        return state;
    const char* home = std::getenv("HOME");
    return home && *home ? std::filesystem::path(home) / ".local" / "state"
                         : std::filesystem::temp_directory_path();
}

} // namespace

std::filesystem::path defaultStore(const Options& options) {
    const std::string name = options.live ? "live-" + std::to_string(options.site) + "-" +
                                                std::to_string(options.privacy)
                                          : "studio";
    return stateDirectory() / "vxprivacy" / (name + ".sqlite");
}

} // namespace vx::tools::studio
