#include "vxprivacy/hosts/web/CSS.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vx::web {

std::string number(double value) {
    const auto parts = std::llround(std::clamp(value, -1e9, 1e9) * 10000);
    std::string digits = std::to_string(std::abs(parts % 10000) + 10000).substr(1);
    digits.erase(digits.find_last_not_of('0') + 1);
    std::string text = parts < 0 ? "-" : "";
    text += std::to_string(std::abs(parts / 10000));
    return digits.empty() ? text : text + "." + digits;
}

std::string points(double value) {
    return number(value) + "px";
}

std::string colour(const Colour& colour) {
    const auto part = [](double value) { return std::to_string(std::lround(value * 255)); };
    std::string text =
        "rgb(" + part(colour.red) + " " + part(colour.green) + " " + part(colour.blue);
    return text + (colour.alpha < 1 ? " / " + number(colour.alpha) : "") + ")";
}

std::string declaration(std::string_view name, const std::string& value) {
    return std::string(name) + ":" + value + ";";
}

} // namespace vx::web
