#include <functional>
#include <memory>

#include "vxprivacy/c/Center.h"
#include "vxprivacy/c/Handles.h"
#include "vxprivacy/c/Module.h"

using namespace vx::c;

namespace {

// The module before its start, or after it where that makes no difference.
vx_module& idle(vx_module* handle) {
    vx_module& module = asked(handle);
    require(!module.calling(), VX_WRONG_STATE);
    return module;
}

} // namespace

vx_result vx_create(const vx_settings* settings, vx_module** module) {
    return guarded([&] {
        const vx_settings& given = handles<vx_settings>()[settings];
        require(!given.services.store.empty(), VX_INVALID_ARGUMENT);
        vx_module*& handle = outOf(module);
        handle = handles<vx_module>().add(std::make_unique<vx_module>(given));
    });
}

vx_result vx_destroy(vx_module* module) {
    return guarded([&] {
        if (const vx_center* center = idle(module).center)
            handles<vx_center>().remove(center);
        handles<vx_module>().remove(module);
    });
}

vx_result vx_on_event(vx_module* module, vx_event_function on_event, void* context) {
    return guarded([&] { idle(module).onEvent = {on_event, context}; });
}

vx_result vx_on_wake_up(vx_module* module, vx_wake_up_function wake_up, void* context) {
    return guarded([&] {
        idle(module).services().setWakeUp(wake_up ? [=] { wake_up(context); }
                                                  : std::function<void()>());
    });
}

vx_result vx_on_open(vx_module* module, vx_open_function open, void* context) {
    return guarded([&] { idle(module).onOpen = {open, context}; });
}

vx_result vx_start(vx_module* module) {
    return guarded([&] {
        vx_module& idleOne = idle(module);
        require(!idleOne.started, VX_WRONG_STATE);
        idleOne.start();
    });
}

vx_result vx_poll(vx_module* module) {
    return guarded([&] { started(module).services().poll(); });
}
