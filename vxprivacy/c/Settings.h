#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "vxprivacy/c/vxprivacy.h"
#include "vxprivacy/services/core/Services.h"

/// What an application decides before the module is made.
struct vx_settings {
    vx::services::Settings services{};
    std::int32_t siteID = 0;
    std::int32_t privacyID = 0;
    std::int32_t containerID = 0;
    bool iab = false;
    bool switchesStartOn = true;
    std::string language{};
    std::string owner{};
    vx_log_function log = nullptr;
    void* logContext = nullptr;
};
