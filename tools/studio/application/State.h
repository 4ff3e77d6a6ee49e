#pragma once

#include <filesystem>
#include <map>
#include <string_view>

#include "tools/studio/application/ReportingDoors.h"
#include "tools/studio/shared/Json.h"
#include "vxprivacy/services/sdk/TagSDK.h"

namespace vx::tools::studio {

/// The tag SDK's permanent data, by key.
std::map<std::string_view, std::string_view>
sortedData(const services::TagSDK::PermanentData& permanentData);

/// Everything that the studio shows of a running application.
Json applicationState(const services::TagSDK& sdk, const ReportingCallbacks& callbacks,
                      const std::filesystem::path& store);

} // namespace vx::tools::studio
