#include "vxprivacy/services/iab/FieldFitter.h"

#include <algorithm>

#include "vxprivacy/services/iab/Countries.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::services::tcf {

namespace {

constexpr const char* kNoLetters = "AA";

constexpr std::uint64_t greatestIn(unsigned width) {
    return (std::uint64_t{1} << width) - 1;
}

char upperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string inUpperCase(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), upperCase);
    return upper;
}

bool isUpperCase(char c) {
    return c >= 'A' && c <= 'Z';
}

} // namespace

void FieldFitter::leftOut(std::string_view field, const std::string& what) const {
    logger_.log("TC string: " + std::string(field) + " cannot hold " + what + ", left out",
                kLogProblem);
}

std::uint32_t FieldFitter::number(std::string_view field, unsigned width,
                                  std::int32_t value) const {
    if (value >= 0 && static_cast<std::uint64_t>(value) <= greatestIn(width))
        return static_cast<std::uint32_t>(value);
    leftOut(field, std::to_string(value));
    return 0;
}

std::uint64_t FieldFitter::time(std::string_view field, std::int64_t seconds) const {
    constexpr std::uint64_t kTenths = 10;
    if (seconds >= 0 && static_cast<std::uint64_t>(seconds) <= greatestIn(kTimeWidth) / kTenths)
        return static_cast<std::uint64_t>(seconds) * kTenths;
    leftOut(field, std::to_string(seconds));
    return 0;
}

std::string FieldFitter::letters(std::string_view field, std::string_view value) const {
    std::string upper = inUpperCase(value);
    if (upper.size() == 2 && std::ranges::all_of(upper, isUpperCase))
        return upper;
    leftOut(field, "\"" + std::string(value) + "\"");
    return kNoLetters;
}

std::string FieldFitter::country(std::string_view field, std::string_view value) const {
    std::string upper = inUpperCase(value);
    if (upper.size() == 2 && isCountry(upper))
        return upper;
    leftOut(field, "\"" + std::string(value) + "\", which is no country");
    return kNoLetters;
}

} // namespace vx::services::tcf
