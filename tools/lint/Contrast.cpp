#include "tools/lint/Contrast.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vx::tools::lint {

namespace {

constexpr Colour kBlack = {0, 0, 0, 1};

double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const Colour& colour) {
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) +
           0.0722 * linear(colour.blue);
}

// As a document can write it.
double inBytes(double component) {
    return std::round(component * 255) / 255;
}

Colour mixed(const Colour& colour, const Colour& into, double share) {
    const auto part = [&](double from, double to) { return inBytes(from + (to - from) * share); };
    return {part(colour.red, into.red), part(colour.green, into.green),
            part(colour.blue, into.blue), 1};
}

double distance(const Colour& one, const Colour& other) {
    return std::hypot(one.red - other.red, one.green - other.green, one.blue - other.blue);
}

} // namespace

std::string hexadecimal(const Colour& colour) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "#";
    for (double component : {colour.red, colour.green, colour.blue}) {
        const auto byte = static_cast<std::size_t>(std::lround(component * 255));
        text += {kDigits[byte / 16], kDigits[byte % 16]};
    }
    return text;
}

double contrast(const Colour& one, const Colour& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

Colour nearestWithContrast(const Colour& colour, const Colour& ground, double least) {
    constexpr int kSteps = 255;
    const auto towards = [&](const Colour& end) {
        for (int step = 0; step < kSteps; ++step) {
            const Colour found = mixed(colour, end, static_cast<double>(step) / kSteps);
            if (contrast(found, ground) >= least)
                return found;
        }
        return end;
    };
    const Colour darker = towards(kBlack);
    const Colour lighter = towards(kWhite);
    if (contrast(darker, ground) < least)
        return lighter;
    if (contrast(lighter, ground) < least)
        return darker;
    return distance(darker, colour) <= distance(lighter, colour) ? darker : lighter;
}

} // namespace vx::tools::lint
