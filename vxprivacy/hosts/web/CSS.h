#pragma once

#include <string>
#include <string_view>

#include "vxprivacy/platform/ui/Colour.h"

namespace vx::web {

/// At most four decimals, independent of the locale.
std::string number(double value);
/// "12.5px".
std::string points(double value);
/// "rgb(13 102 166)", with its alpha where it is not opaque.
std::string colour(const Colour& colour);
/// Appends "name:value;" to `text`, the value in parts. A screen has thousands of these.
template <class... Parts>
void declare(std::string& text, std::string_view name, const Parts&... value) {
    text.append(name).append(":");
    (text.append(value), ...);
    text.append(";");
}

} // namespace vx::web
