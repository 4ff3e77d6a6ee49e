// Reads both forms of the publisher's restrictions: the one becomes the other, and then is encoded.

#include "vxprivacy/services/iab/PublisherRules.h"

#include <algorithm>
#include <charconv>

#include "vxprivacy/platform/foundation/Text.h"

namespace vx::services::tcf {

namespace {

constexpr char kNoRestriction = '_';

bool isType(char c) {
    return c >= '0' && c <= '2';
}

void add(std::uint32_t purpose, const std::string& types, char filler, PublisherRules& rules) {
    rules.texts.emplace(purpose, types);
    for (std::uint32_t vendor = 1; vendor <= types.size(); ++vendor) {
        const char type = types[vendor - 1];
        if (type == filler)
            continue;
        const bool fits = vendor <= IdentifierSet::kGreatest && isType(type);
        rules.whole &= fits;
        if (fits)
            rules.encoded[{purpose, static_cast<Restriction::Type>(type - '0')}].insert(vendor);
    }
}

// False when there is no such vendor or type.
bool setType(std::string_view vendor, std::string_view type, char filler, std::string& types) {
    const std::int32_t n = integerValue(vendor);
    if (n < 1 || static_cast<std::uint32_t>(n) > IdentifierSet::kGreatest || type.size() != 1 ||
        !isType(type[0]))
        return false;
    const auto place = static_cast<std::size_t>(n);
    if (types.size() < place)
        types.resize(place, filler);
    types[place - 1] = type[0];
    return true;
}

} // namespace

std::optional<std::uint32_t> purposeIn(std::string_view text) {
    std::uint32_t purpose = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), purpose);
    const bool plain = error == std::errc() && end == text.data() + text.size() && text[0] != '0';
    return plain && purpose <= kGreatestPurpose ? std::optional(purpose) : std::nullopt;
}

PublisherRules rulesOf(const PublisherRestrictions& restrictions) {
    constexpr char kFiller = '1';
    PublisherRules rules;
    for (const auto& [id, types] : restrictions)
        if (const auto purpose = purposeIn(id))
            add(*purpose, types, kFiller, rules);
    return rules;
}

PublisherRules rulesOf(const ExplicitRestrictions& restrictions) {
    PublisherRules rules;
    for (const auto& [id, vendors] : restrictions) {
        const auto purpose = purposeIn(id);
        rules.whole &= purpose.has_value();
        std::string types;
        for (const auto& [vendor, type] : vendors)
            rules.whole &= setType(vendor, type, kNoRestriction, types);
        if (purpose && !types.empty())
            add(*purpose, types, kNoRestriction, rules);
    }
    return rules;
}

RestrictionTexts textsOf(const Restrictions& restrictions) {
    RestrictionTexts texts;
    for (const auto& [restriction, vendors] : restrictions) {
        std::string& types = texts[restriction.purpose];
        if (types.size() < vendors.greatest())
            types.resize(vendors.greatest(), kNoRestriction);
        vendors.forEachRange([&, type = restriction.type](std::uint32_t first, std::uint32_t last) {
            std::fill(types.begin() + (first - 1), types.begin() + last,
                      static_cast<char>('0' + type));
        });
    }
    return texts;
}

} // namespace vx::services::tcf
