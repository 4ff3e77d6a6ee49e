#include "vxprivacy/services/iab/Choice.h"

#include <charconv>
#include <cstdint>
#include <string_view>

#include "vxprivacy/engine/ConsentEntry.h"

namespace vx::services::tcf {

namespace {

// Of each item the odd number above the offset is consent, the even one behind it the rest.
void enter(std::string_view text, std::int32_t offset, bool accepted, Choice::Items& items) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::int64_t above = std::int64_t{number} - offset;
    if (error != std::errc() || end != text.data() + text.size() || above < 1 ||
        above > 2 * std::int64_t{IdentifierSet::kGreatest})
        return;
    const auto item = static_cast<std::uint32_t>((above + 1) / 2);
    if (above % 2 != 0)
        (accepted ? items.consentAccepted : items.consentRefused).insert(item);
    else
        (accepted ? items.interestAccepted : items.interestRefused).insert(item);
}

} // namespace

Choice Choice::of(const OrderedDictionary<std::string>& consent) {
    Choice choice;
    for (const auto& [key, value] : consent) {
        const bool accepted = value == kConsentAccepted;
        const auto behind = [&key](std::string_view prefix) {
            return std::string_view(key).substr(prefix.size());
        };
        switch (consentKind(key)) {
        case ConsentKind::Category:
            enter(behind(kVXCategoryPrefix), kVXPurposeOffset, accepted, choice.purposes);
            break;
        case ConsentKind::Vendor:
            enter(behind(kVXVendorPrefix), kVXVendorOffset, accepted, choice.vendors);
            break;
        case ConsentKind::Feature:
            enter(behind(kVXFeaturePrefix), kVXSpeFeatureOffset, accepted, choice.specialFeatures);
            break;
        case ConsentKind::None:
            break;
        }
    }
    return choice;
}

} // namespace vx::services::tcf
