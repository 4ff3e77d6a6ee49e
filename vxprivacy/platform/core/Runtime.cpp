#include "vxprivacy/platform/core/Runtime.h"

#include <algorithm>
#include <atomic>

namespace vx {

namespace {

std::atomic<Runtime*> currentRuntime = nullptr;
std::atomic<bool> wasMissed = false; // since the last runtime began

// What the module meets where there is no runtime: nothing is there, and nothing is kept.
class Nothing : public KeyValueStore,
                public ConfigurationDocuments,
                public Logger,
                public Clock,
                public Variables {
public:
    Platform platform() { return {*this, *this, notifications_, *this, *this, *this, *this, {}}; }

    // Of the store and of the variables.
    std::optional<std::string> get(std::string_view) const override { return {}; }
    void set(std::string_view, std::string_view) override {}
    void remove(std::string_view) override {}
    void beginTransaction() override {}
    void commitTransaction() override {}
    void rollBackTransaction() override {}
    void initialise(std::int32_t, std::int32_t) override {}
    void registered(const std::shared_ptr<VXConfigurationFile>&) override {}
    void log(std::string_view, int) override {}
    std::uint64_t nowMilliseconds() const override { return 0; }

private:
    NotificationCenter notifications_;
};

} // namespace

VXSingleton::~VXSingleton() = default;

Runtime::Runtime(Platform platform) : platform_(std::move(platform)) {
    Runtime* present = nullptr;
    if (!currentRuntime.compare_exchange_strong(present, this))
        present->platform_.logger.log("A second Runtime is ignored: there may be one at a time",
                                      kLogProblem);
    else if (wasMissed.exchange(false))
        platform_.logger.log("The module was called while there was no Runtime; it answered as if "
                             "nothing were stored",
                             kLogProblem);
}

Runtime::~Runtime() {
    while (!singletons_.empty()) // the last made goes first, while the others are still there
        singletons_.pop_back();
    Runtime* self = this;
    currentRuntime.compare_exchange_strong(self, nullptr);
}

Runtime& Runtime::current() {
    if (Runtime* runtime = currentRuntime)
        return *runtime;
    wasMissed = true;
    return ofNothing();
}

// Never destroyed, for whatever is called at the very end of the process.
Runtime& Runtime::ofNothing() {
    static Nothing& nothing = *new Nothing;
    static Runtime& runtime = *new Runtime(nothing.platform(), WithoutEffect());
    return runtime;
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
