#pragma once

#include <string>
#include <string_view>

#include "vxprivacy/hosts/web/PageSettings.h"
#include "vxprivacy/hosts/web/Theme.h"

namespace vx::web {

/// The page around a screen.
struct Page {
    /// Complete: no part of them is left to a default.
    const PageSettings& settings;
    std::string_view policy; ///< its content security policy
    std::string_view id;     ///< what its events call it
    Colours colours = Colours::Platform;
    std::string_view frame;  ///< class with the declarations of `frame`
    std::string_view screen; ///< markup of the screen
};

/// The class of the page that goes with the colours.
std::string_view nameOf(Colours colours);

/// `page` as a document of HTML.
std::string document(const Page& page);

} // namespace vx::web
