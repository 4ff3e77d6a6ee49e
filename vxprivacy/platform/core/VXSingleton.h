#pragma once

namespace vx {

/// Base of the classes of which a process has one instance.
class VXSingleton {
public:
    virtual ~VXSingleton();
    VXSingleton(const VXSingleton&) = delete;
    VXSingleton& operator=(const VXSingleton&) = delete;

protected:
    VXSingleton() = default;
};

} // namespace vx
