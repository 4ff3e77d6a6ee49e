#include "vxprivacy/services/iab/AdditionalConsent.h"

#include <set>

namespace vx::services::tcf {

namespace {

std::string joined(const std::set<std::int32_t>& numbers) {
    std::string text;
    for (const std::int32_t number : numbers)
        text += (text.empty() ? "" : ".") + std::to_string(number);
    return text;
}

} // namespace

std::string additionalConsentOf(std::span<const std::int32_t> accepted,
                                std::span<const std::int32_t> disclosed) {
    const auto isNone = [](std::int32_t number) { return number < 1; };
    std::set<std::int32_t> with(accepted.begin(), accepted.end());
    std::set<std::int32_t> without(disclosed.begin(), disclosed.end());
    std::erase_if(with, isNone);
    std::erase_if(without,
                  [&](std::int32_t number) { return isNone(number) || with.contains(number); });
    return "2~" + joined(with) + "~dv." + joined(without);
}

} // namespace vx::services::tcf
