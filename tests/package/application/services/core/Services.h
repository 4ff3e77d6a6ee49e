#pragma once

namespace application {

/// What this application calls its services.
struct Services {};

} // namespace application
