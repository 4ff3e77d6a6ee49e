// Where each mode's store lies, and with which configuration its publisher begins.

#include "tools/studio/world/Installation.h"

#include <cstdlib>
#include <system_error>

#include "tools/samples/Samples.h"
#include "tools/system/Files.h"

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

std::filesystem::path defaultStore(const WorldOptions& options, const std::string& list,
                                   Mode mode) {
    std::string name = options.live ? "live-" + std::to_string(options.site) + "-" +
                                          std::to_string(options.privacy)
                                    : "studio";
    if (mode == Mode::IAB)
        name += list.empty() ? "-iab" : "-iab-" + list;
    return stateDirectory() / "vxprivacy" / (name + ".sqlite");
}

std::filesystem::path storeOf(const WorldOptions& options, const std::string& list, Mode mode) {
    if (options.store.empty())
        return std::filesystem::absolute(defaultStore(options, list, mode));
    std::filesystem::path store = std::filesystem::absolute(options.store);
    if (mode != options.mode)
        store.replace_filename(store.stem().string() + (mode == Mode::IAB ? "-iab" : "-category") +
                               store.extension().string());
    return store;
}

Result<Publication> publicationOf(const std::filesystem::path& file) {
    Result<Edition> edition = editionOf(system::readFile(file));
    if (!edition)
        return Problem{file.string() + ": " + edition.problem().text};
    return Publication(*edition);
}

// The copy published in an earlier run lies beside the store: the store holds its version, and
// nothing older would be taken for newer. A damaged one is somebody's work and stays.
Result<Publication> publicationBeside(const std::filesystem::path& store, Mode mode) {
    const std::filesystem::path file = store.string() + ".published.json";
    std::error_code ignored;
    if (std::filesystem::exists(file, ignored)) {
        const Result<Edition> kept = editionOf(system::readFile(file));
        if (!kept)
            return Problem{file.string() + ", which was published last, is damaged (" +
                           kept.problem().text + "): mend it or move it away"};
        return Publication(*kept, file);
    }
    return Publication(*editionOf(sampleFor(mode)), file);
}

Result<Installation> makeInstallation(const WorldOptions& options, const std::string& vendorList,
                                      Mode mode) {
    const std::filesystem::path store = storeOf(options, vendorList, mode);
    const auto claim = StoreClaim::make(store, options.store.empty() ? StoreClaim::Path::Usual
                                                                     : StoreClaim::Path::Named);
    if (!claim)
        return claim.problem();
    const bool isNamed = mode == options.mode && !options.config.empty();
    const Result<Publication> publication =
        isNamed ? publicationOf(options.config) : publicationBeside(store, mode);
    if (!publication)
        return publication.problem();
    return Installation{.store = store, .claim = *claim, .publication = *publication};
}

} // namespace

std::string sampleFor(Mode mode) {
    return std::string(samples()[mode == Mode::IAB ? "iab.json" : "category.json"]);
}

Result<Installations> makeInstallations(const WorldOptions& options,
                                        const std::string& vendorList) {
    const auto category = makeInstallation(options, vendorList, Mode::Category);
    if (!category)
        return category.problem();
    const auto iab = makeInstallation(options, vendorList, Mode::IAB);
    if (!iab)
        return iab.problem();
    return Installations{.category = *category,
                         .iab = *iab,
                         .restrictions = PackagedRestrictions(iab->store.string() + ".packaged")};
}

} // namespace vx::tools::studio
