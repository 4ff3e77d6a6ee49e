#include "vxprivacy/platform/core/Doors.h"

namespace vx {

Logger::~Logger() = default;

Clock::~Clock() = default;

Variables::~Variables() = default;

ConfigurationDocuments::~ConfigurationDocuments() = default;

} // namespace vx
