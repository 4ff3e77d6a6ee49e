// Has both: the application's own headers and VXPrivacy's.

#include <cstdlib>
#include <memory>

#include <hosts/web/WebSurface.h>
#include <services/core/Services.h>

#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/services/core/Services.h"

int main() {
    [[maybe_unused]] const application::Services ownServices;
    [[maybe_unused]] const application::WebSurface ownSurface;
    vx::services::Services services({.store = "application/choices.sqlite"});
    services.poll();
    vx::web::WebSurface surface(std::make_shared<vx::View>(), {});
    return surface.render().empty() ? EXIT_FAILURE : EXIT_SUCCESS;
}
