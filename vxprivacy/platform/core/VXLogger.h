#pragma once

#include <string_view>

#include "vxprivacy/platform/core/LogLevel.h"
#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// The core library's log: hands its lines to the door `Logger`. Where the module finds something
/// wrong it says so here and goes on; it has no other way to report a problem. Application's
/// thread.
class VXPRIVACY_EXPORT VXLogger {
public:
    /// May be reached before there is a `Runtime`; logging needs one.
    static VXLogger& sharedInstance();

    /// `level` is a `LogLevel`.
    void logMessage(std::string_view message, int level);
};

} // namespace vx
