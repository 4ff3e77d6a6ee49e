#include "tools/studio/Installation.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

#include "tools/studio/Assets.h"

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

std::filesystem::path defaultStore(const Options& options, const VendorList& list, bool iab) {
    std::string name = options.live ? "live-" + std::to_string(options.site) + "-" +
                                          std::to_string(options.privacy)
                                    : "studio";
    if (iab)
        name += list.name.empty() ? "-iab" : "-iab-" + list.name;
    return stateDirectory() / "vxprivacy" / (name + ".sqlite");
}

std::filesystem::path storeOf(const Options& options, const VendorList& list, bool iab) {
    if (options.store.empty())
        return std::filesystem::absolute(defaultStore(options, list, iab));
    std::filesystem::path store = std::filesystem::absolute(options.store);
    if (iab != options.iab)
        store.replace_filename(store.stem().string() + (iab ? "-iab" : "-category") +
                               store.extension().string());
    return store;
}

Publication publicationOf(const std::filesystem::path& file) {
    Publication publication(readFile(file));
    if (const std::string& problem = publication.inForce().problem; !problem.empty())
        throw std::runtime_error(file.string() + ": " + problem);
    return publication;
}

} // namespace

// The copy published in an earlier run lies beside the store: the store holds its version, and
// nothing older would be taken for newer.
Installation makeInstallation(const Options& options, const VendorList& vendorList, bool iab) {
    const std::filesystem::path store = storeOf(options, vendorList, iab);
    const bool named = iab == options.iab && !options.config.empty();
    return {.iab = iab,
            .store = store,
            .publication =
                named ? publicationOf(options.config)
                      : Publication(store.string() + ".published.json", asset(sampleName(iab)))};
}

} // namespace vx::tools::studio
