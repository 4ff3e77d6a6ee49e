#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <unistd.h>

#include "vxprivacy/c/Guard.h"
#include "vxprivacy/c/Settings.h"
#include "vxprivacy/c/vxprivacy.h"
#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/ui/Application.h"
#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/services/iab/TCFLibrary.h"

struct vx_center;

namespace vx::web {
class WebSurface;
}

namespace vx::c {

/// A function of the application's and what it wants back.
template <class Function>
struct Hook {
    Function function = nullptr;
    void* context = nullptr;
};

/// There is one of these at a time; the second one throws `Misuse`. Any thread.
class OnlyOne {
public:
    OnlyOne() { require(!taken_.exchange(true), VX_WRONG_STATE); }
    ~OnlyOne() { taken_ = false; }
    OnlyOne(const OnlyOne&) = delete;
    OnlyOne& operator=(const OnlyOne&) = delete;

private:
    inline static std::atomic<bool> taken_ = false;
};

} // namespace vx::c

/// The services, the runtime on them and who hears of it.
struct vx_module : private vx::Logger, private vx::Application {
public:
    explicit vx_module(const vx_settings& given);
    ~vx_module() override;

    void start();

    /// Calls the application: until that returns, it may ask the module and do nothing else.
    template <class Function, class... Arguments>
    void call(vx::c::Hook<Function> hook, Arguments... arguments) {
        if (!hook.function)
            return;
        ++calling_;
        hook.function(hook.context, arguments...);
        --calling_;
    }
    bool calling() const { return calling_ > 0; }

private:
    const vx::c::OnlyOne onlyOne_{}; // first: it is free when all else has ended

public:
    const vx_settings settings;
    const pid_t process = ::getpid(); // a forked child has no worker, nor the store's locks
    vx::c::Hook<vx_event_function> onEvent;
    vx::c::Hook<vx_open_function> onOpen;
    bool started = false;
    /// The privacy center that is open, which ends before this does, and its page; null: none is.
    vx_center* center = nullptr;
    vx::web::WebSurface* page = nullptr;

    vx::services::Services& services() { return services_; }
    const vx::KeyValueStore& store() const { return store_; }

private:
    void log(std::string_view line, int level) override;
    void openURL(std::string_view address) override;

    int calling_ = 0;
    vx::services::Services services_;
    vx::KeyValueStore& store_;
    std::optional<vx::services::TCFLibrary> iab_;
    std::optional<vx::Runtime> runtime_;
};

namespace vx::c {

/// The module behind the handle, for a question. Throws.
vx_module& asked(vx_module* handle);
/// The same of one that is started, and is to do something: not from within a call of the
/// application's.
vx_module& started(vx_module* handle);

} // namespace vx::c
