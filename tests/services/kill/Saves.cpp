#include "tests/services/kill/Saves.h"

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx::services::test {

namespace {

constexpr std::uint64_t kBeginning = 1'600'000'000'000;

std::int32_t categories(std::uint64_t number) {
    return number % 2 == 0 ? 200 : 150;
}

std::string value(std::uint64_t number) {
    return number % 2 == 0 ? "0" : "1";
}

} // namespace

std::uint64_t timeOfSave(std::uint64_t number) {
    return kBeginning + number;
}

std::uint64_t lastSave(const Entries& entries) {
    const auto time = entries.find(std::string(kVXConsentTime));
    return time == entries.end() ? 0 : unsignedInteger(time->second) - kBeginning;
}

ConsentDictionary consentOfSave(std::uint64_t number) {
    ConsentDictionary consent;
    for (std::int32_t id = 1; id <= categories(number); ++id)
        consent.set(numberedKey(kVXCategoryPrefix, id), value(number));
    return consent;
}

Entries entriesAfter(std::uint64_t number) {
    Entries entries{{std::string(kVXShouldDisplayPrivacyCenter), number == 0 ? "1" : "0"}};
    if (number == 0)
        return entries;
    if (number > 1)
        for (const auto& [key, before] : consentOfSave(number - 1))
            entries[key] = before;
    std::string list;
    for (const auto& [key, now] : consentOfSave(number)) {
        entries[key] = now;
        list += key + ";";
    }
    entries[std::string(kVXSavedCategories)] = list;
    entries[std::string(kVXPrivacyConsent)] = value(number);
    entries[std::string(kVXConsentTime)] = std::to_string(timeOfSave(number));
    return entries;
}

std::string userOfSave(std::uint64_t number) {
    return "save-" + std::to_string(number);
}

} // namespace vx::services::test
