#include "vxprivacy/hosts/web/StaticFiles.h"

#include <iterator>
#include <string>

#include "vxprivacy/c/Guard.h"
#include "vxprivacy/hosts/web/WebSurface.h"

using namespace vx::c;

vx_result vx_static_file(size_t number, const char** name, const char** media_type,
                         const char** content, size_t* length) {
    return guarded([&] {
        const vx::web::StaticFiles files = vx::web::staticFiles();
        require(number < static_cast<size_t>(std::distance(files.begin(), files.end())),
                VX_INVALID_ARGUMENT);
        outOf(name);
        outOf(media_type);
        outOf(content);
        outOf(length);
        // Name and type are literals of the program, with a zero at their end.
        const vx::web::StaticFile& file =
            *std::next(files.begin(), static_cast<std::ptrdiff_t>(number));
        *name = file.name.data();
        *media_type = file.mediaType.data();
        *content = file.content.data();
        *length = file.content.size();
    });
}

const char* vx_content_security_policy() {
    static const std::string policy(vx::web::contentSecurityPolicy());
    return policy.c_str();
}
