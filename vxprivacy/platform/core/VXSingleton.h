#pragma once

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// Base of the classes that have one shared instance. The `Runtime` owns it, from its first use to
/// the runtime's end; each class has an accessor of its own, `sharedInstance`.
class VXPRIVACY_EXPORT VXSingleton {
public:
    virtual ~VXSingleton();
    VXSingleton(const VXSingleton&) = delete;
    VXSingleton& operator=(const VXSingleton&) = delete;

protected:
    VXSingleton() = default;
};

} // namespace vx
