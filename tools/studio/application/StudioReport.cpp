#include "tools/studio/application/StudioReport.h"

#include <utility>

#include <unistd.h>

#include "tools/system/Files.h"

namespace vx::tools::studio {

void report(const Json& line) {
    std::string text = dumped(line);
    text += '\n';
    system::writeAll(STDOUT_FILENO, text);
}

void report(const char* kind, const std::string& title, Json body) {
    report({{"kind", kind}, {"title", title}, {"body", std::move(body)}});
}

} // namespace vx::tools::studio
