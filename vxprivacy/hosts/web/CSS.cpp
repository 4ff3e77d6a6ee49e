#include "vxprivacy/hosts/web/CSS.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vx::web {

std::string number(double value) {
    const auto parts = std::llround(std::clamp(value, -1e9, 1e9) * 10000);
    std::string text = parts < 0 ? "-" : "";
    text += std::to_string(std::abs(parts / 10000));
    const auto fraction = std::abs(parts % 10000);
    if (fraction == 0)
        return text;
    text.append(".").append(std::to_string(fraction + 10000), 1);
    text.erase(text.find_last_not_of('0') + 1);
    return text;
}

std::string points(double value) {
    return number(value).append("px");
}

std::string colour(const Colour& colour) {
    const auto part = [](double value) { return std::to_string(std::lround(value * 255)); };
    std::string text =
        "rgb(" + part(colour.red) + " " + part(colour.green) + " " + part(colour.blue);
    return text + (colour.alpha < 1 ? " / " + number(colour.alpha) : "") + ")";
}

} // namespace vx::web
