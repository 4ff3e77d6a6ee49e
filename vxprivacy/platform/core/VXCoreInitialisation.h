#pragma once

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// Initialises the core library when it is made. Here the library is what stands behind the doors,
/// ready since the `Runtime` was made. So it only sees that there is one: without, calling it is a
/// programming error.
class VXPRIVACY_EXPORT VXCoreInitialisation {
public:
    VXCoreInitialisation();
};

} // namespace vx
