#pragma once

#include <string_view>

namespace vx::web {

/// The style sheet that every page of a `WebSurface` links, page/surface.css.
std::string_view surfaceCSS();
/// The page's side of a `WebSurface`, a JavaScript module, page/surface.js.
std::string_view surfaceJS();

} // namespace vx::web
