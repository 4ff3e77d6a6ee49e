#include <uv.h>

#include "vxprivacy/services/core/Services.h"

void run(vx::services::Services& services, uv_loop_t* loop) {
    uv_async_t wakeUp;
    wakeUp.data = &services;
    uv_async_init(loop, &wakeUp, [](uv_async_t* handle) {
        static_cast<vx::services::Services*>(handle->data)->poll();
    });
    uv_unref(reinterpret_cast<uv_handle_t*>(&wakeUp)); // the loop need not live for it
    services.setWakeUp([&wakeUp] { uv_async_send(&wakeUp); });
    services.poll();
    uv_run(loop, UV_RUN_DEFAULT);
    services.setWakeUp(nullptr);
    uv_close(reinterpret_cast<uv_handle_t*>(&wakeUp), nullptr);
    uv_run(loop, UV_RUN_DEFAULT); // until it is closed
}
