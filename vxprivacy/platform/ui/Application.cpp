#include "vxprivacy/platform/ui/Application.h"

#include <algorithm>
#include <cstddef>

#include "vxprivacy/platform/core/Runtime.h"

namespace vx {

namespace {

bool isHexadecimal(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isAllowed(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-._~:/?#[]@!$&'()*+,;=%").find(c) != std::string_view::npos;
}

} // namespace

Application::~Application() = default;

bool isURL(std::string_view text) {
    if (text.empty() || !std::ranges::all_of(text, isAllowed))
        return false;
    for (std::size_t at = 0; (at = text.find('%', at)) != std::string_view::npos; ++at)
        if (at + 2 >= text.size() || !isHexadecimal(text[at + 1]) || !isHexadecimal(text[at + 2]))
            return false;
    return true;
}

void openURL(std::string_view address) {
    if (platform().application && isURL(address))
        platform().application->openURL(address);
}

} // namespace vx
