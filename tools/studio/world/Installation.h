#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "tools/studio/shared/Mode.h"
#include "tools/studio/shared/Result.h"
#include "tools/studio/world/PackagedRestrictions.h"
#include "tools/studio/world/Publication.h"
#include "tools/studio/world/StoreClaim.h"
#include "tools/studio/world/WorldOptions.h"

namespace vx::tools::studio {

/// The application as it is installed in one of its modes, and what is published for it.
struct Installation {
    std::filesystem::path store;
    std::shared_ptr<const StoreClaim> claim; ///< on it
    /// What the development backend serves; unused with real hosts.
    Publication publication;
};

/// The sample configuration for a mode.
std::string sampleFor(Mode mode);

/// One for each mode.
struct Installations {
    Installation category;
    Installation iab;
    PackagedRestrictions restrictions; ///< beside the store of IAB mode

    Installation& in(Mode mode) { return mode == Mode::IAB ? iab : category; }
    const Installation& in(Mode mode) const { return mode == Mode::IAB ? iab : category; }
};

/// The installations, or what is wrong with the store or configuration that the options name.
/// `vendorList` is the list's name, empty for the samples. A store lies in $XDG_STATE_HOME or
/// ~/.local/state unless the options name one: that is for the mode they begin in, and the other
/// mode's lies beside it. Each vendor list has a store of its own, as a list gives way to a newer
/// one only. Throws std::system_error when a file cannot be read.
Result<Installations> makeInstallations(const WorldOptions& options, const std::string& vendorList);

} // namespace vx::tools::studio
