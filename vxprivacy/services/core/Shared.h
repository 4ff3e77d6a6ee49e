#pragma once

#include "vxprivacy/platform/core/Doors.h"
#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/services/core/HTTPClient.h"

namespace vx::services {

/// What every service works with. All of it outlives the services.
struct Shared {
    KeyValueStore& store;
    HTTPClient& http;
    const Clock& clock;
    Logger& logger;
};

} // namespace vx::services
