#include "vxprivacy/platform/sdk/Zentrix.h"

namespace vx {

Zentrix::~Zentrix() = default;

} // namespace vx
