#pragma once

#include "services/core/HTTPClient.h"
#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/core/KeyValueStore.h"

namespace vx::services {

/// What every service works with. All of it outlives the services.
struct Shared {
    KeyValueStore& store;
    HTTPClient& http;
    const Clock& clock;
    Logger& logger;
};

} // namespace vx::services
