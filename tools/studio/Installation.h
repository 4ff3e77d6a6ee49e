#pragma once

#include <filesystem>

#include "tools/studio/Options.h"
#include "tools/studio/Publication.h"
#include "tools/studio/VendorList.h"

namespace vx::tools::studio {

/// The application as it is installed in one of its modes, and what is published for it.
struct Installation {
    bool iab = false;
    std::filesystem::path store;
    /// What the development backend serves; unused with real hosts.
    Publication publication;
};

/// The name of the sample configuration for a mode.
inline const char* sampleName(bool iab) {
    return iab ? "iab.json" : "category.json";
}

/// The installation in a mode. Its store lies in $XDG_STATE_HOME or ~/.local/state unless the
/// options name one: that is for the mode they begin in, and the other mode's lies beside it. Each
/// vendor list has a store of its own, as a list gives way to a newer one only. Throws
/// std::runtime_error when the configuration that the options name cannot be used.
Installation makeInstallation(const Options& options, const VendorList& vendorList, bool iab);

} // namespace vx::tools::studio
