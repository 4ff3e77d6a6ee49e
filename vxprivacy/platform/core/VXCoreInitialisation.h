#pragma once

namespace vx {

/// Initialises the core library when it is made. Here the library is the installed platform, so
/// what is left to do is to see that there is one.
class VXCoreInitialisation {
public:
    VXCoreInitialisation();
};

} // namespace vx
