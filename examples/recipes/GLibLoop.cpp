#include <glib.h>

#include "vxprivacy/services/core/Services.h"

namespace {

gboolean poll(gpointer services) {
    static_cast<vx::services::Services*>(services)->poll();
    return G_SOURCE_REMOVE;
}

} // namespace

void run(vx::services::Services& services, GMainLoop* loop) { // or gtk_main, g_application_run
    services.setWakeUp([&] { g_idle_add(poll, &services); }); // g_idle_add is safe on any thread
    services.poll();
    g_main_loop_run(loop);
    services.setWakeUp(nullptr);
    while (g_idle_remove_by_data(&services)) // what the worker asked for last
        ;
}
