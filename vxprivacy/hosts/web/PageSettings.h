#pragma once

#include <optional>
#include <string>

#include "vxprivacy/hosts/web/HostTexts.h"
#include "vxprivacy/platform/foundation/Export.h"

namespace vx::web {

/// What the page of a surface says and links beside the screen. Texts are UTF-8.
struct VXPRIVACY_EXPORT PageSettings {
    /// Name of the page; empty: `HostTexts::title`.
    std::string title = {};
    /// Whose page it is, the application's name for instance; empty: not told.
    std::string owner = {};
    /// BCP 47; also decides whether the page runs from right to left. Empty: the code that the
    /// engine was given, or "en".
    std::string language = {};
    /// What the host itself says; absent: the built-in texts of the language.
    std::optional<HostTexts> texts = {};
    /// Where the page finds two of the `staticFiles` and `WebSurface::layoutCSS`. The other static
    /// files are looked for beside surface.js.
    std::string surfaceCSS = "surface.css";
    std::string layoutCSS = "layout.css";
    std::string surfaceJS = "surface.js";
    /// Where the page posts its events, unless it has a message channel of the application's.
    std::string events = "event";
};

} // namespace vx::web
