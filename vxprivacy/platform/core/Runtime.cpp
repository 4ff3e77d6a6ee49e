#include "vxprivacy/platform/core/Runtime.h"

#include <algorithm>
#include <cassert>

namespace vx {

namespace {

Runtime* currentRuntime = nullptr;

} // namespace

VXSingleton::~VXSingleton() = default;

Runtime::Runtime(Platform platform) : platform_(std::move(platform)) {
    assert(!currentRuntime && "there may be one runtime at a time");
    currentRuntime = this;
}

Runtime::~Runtime() {
    while (!singletons_.empty()) // the last made goes first, while the others are still there
        singletons_.pop_back();
    currentRuntime = nullptr;
}

Runtime& Runtime::current() {
    assert(currentRuntime && "a runtime must be made before the module is called");
    return *currentRuntime;
}

VXSingleton& Runtime::shared(std::type_index type,
                             const std::function<std::unique_ptr<VXSingleton>()>& make) {
    const std::lock_guard lock(mutex_);
    const auto isOfType = [&](const auto& entry) { return entry.first == type; };
    auto found = std::ranges::find_if(singletons_, isOfType);
    if (found != singletons_.end())
        return *found->second;
    std::unique_ptr<VXSingleton> made = make();
    return *singletons_.emplace_back(type, std::move(made)).second;
}

} // namespace vx
