#include "tools/studio/application/Report.h"

#include <cerrno>
#include <string_view>
#include <utility>

#include <unistd.h>

namespace vx::tools::studio {

void report(const Json& line) {
    std::string text = line.dump(-1, ' ', false, Json::error_handler_t::replace);
    text += '\n';
    for (std::string_view rest = text; !rest.empty();) {
        const ssize_t written = write(STDOUT_FILENO, rest.data(), rest.size());
        if (written < 0 && errno != EINTR)
            return;
        rest.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
}

void report(const char* kind, const std::string& title, Json body) {
    report({{"kind", kind}, {"title", title}, {"body", std::move(body)}});
}

} // namespace vx::tools::studio
