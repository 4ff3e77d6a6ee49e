#include "vxprivacy/hosts/web/Addresses.h"

#include <algorithm>

#include "vxprivacy/platform/ui/Application.h"

namespace vx::web {

namespace {

// `scheme` in lower case, with its colon.
bool hasScheme(std::string_view address, std::string_view scheme) {
    return std::ranges::equal(address.substr(0, scheme.size()), scheme, [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b;
    });
}

} // namespace

bool mayOpen(std::string_view address) {
    return isURL(address) && (hasScheme(address, "https://") || hasScheme(address, "http://") ||
                              hasScheme(address, "mailto:"));
}

} // namespace vx::web
