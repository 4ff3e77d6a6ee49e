#pragma once

namespace application {

/// What this application calls a web surface.
struct WebSurface {};

} // namespace application
