#include "vxprivacy/iab_center/ButtonBar.h"

#include <algorithm>
#include <cstdint>

#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

struct ButtonBar::Place {
    std::int32_t position;
    std::string_view name;
};

namespace {

// Formats of bars of one, two and three buttons.
constexpr std::string_view kFormats[] = {"H:|-[%1$@]-|", "H:|-[%1$@]-[%2$@(%1$@)]-|",
                                         "H:|-[%1$@]-[%2$@(%1$@)]-[%3$@(%1$@)]-|"};

} // namespace

ButtonBar::ButtonBar(const VXPrivacyConfiguration& configuration, Button first, Button acceptAll,
                     Button refuseAll)
    : configuration_(configuration), first_(first), acceptAll_(acceptAll), refuseAll_(refuseAll) {}

bool ButtonBar::has(const Button& button) const {
    const auto& components = configuration_.components();
    return !components.contains(first_.component) || components.contains(button.component);
}

// In the order of the bar.
std::vector<ButtonBar::Place> ButtonBar::places() const {
    const auto& components = configuration_.components();
    std::vector<Place> places;
    for (const Button& button : {first_, acceptAll_, refuseAll_}) {
        if (!has(button))
            continue;
        const auto next = static_cast<std::int32_t>(places.size()) + 1;
        const std::string* position = components.find(button.component);
        const bool configured = position && components.contains(first_.component);
        places.push_back({configured ? integerValue(*position) : next, button.name});
    }
    std::ranges::stable_sort(places, {}, &Place::position);
    return places;
}

std::string ButtonBar::format() const {
    const std::vector<Place> bar = places();
    std::int32_t expected = 0;
    if (std::ranges::any_of(bar, [&](const Place& each) { return each.position != ++expected; }))
        VXLogger::sharedInstance().logMessage(
            formatted("The positions of \"%@\" and its like do not run from 1: the bar shows what "
                      "there is, in their order",
                      {first_.component}),
            kLogProblem);
    const auto name = [&](std::size_t i) { return i < bar.size() ? bar[i].name : ""; };
    return formatted(kFormats[bar.size() - 1], {name(0), name(1), name(2)});
}

} // namespace vx
