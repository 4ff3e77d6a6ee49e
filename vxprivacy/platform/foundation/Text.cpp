// Formatting, cutting up and reading numbers from text, by bytes alone.

#include "vxprivacy/platform/foundation/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <limits>

namespace vx {

namespace {

bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool startsWithDigit(std::string_view text) {
    return !text.empty() && isDigit(text.front());
}

std::string_view withoutLeadingSpace(std::string_view text) {
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    return text;
}

// What an argument stands for.
struct Placeholder {
    std::size_t length = 0; // 0: there is none
    std::size_t number = 0; // of the argument, from 1; 0: the next one
};

// The one that `text`, which starts with "%", starts with.
Placeholder leadingPlaceholder(std::string_view text) {
    if (text.starts_with("%@") || text.starts_with("%d"))
        return {2, 0};
    if (text.size() >= 4 && text[1] >= '1' && text[1] <= '9' && text.substr(2, 2) == "$@")
        return {4, static_cast<std::size_t>(text[1] - '0')};
    return {};
}

// Takes a sign off the front of `text`; says whether it was a minus.
bool takeSign(std::string_view& text) {
    if (text.empty() || (text.front() != '-' && text.front() != '+'))
        return false;
    const bool negative = text.front() == '-';
    text.remove_prefix(1);
    return negative;
}

// The number in front of `text`, of which a negative one is the negated magnitude; the type's limit
// when it does not fit.
template <class Integer>
Integer leadingInteger(std::string_view digits, bool negative) {
    using Limits = std::numeric_limits<Integer>;
    Integer magnitude = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
    if (result.ec == std::errc::result_out_of_range)
        return negative ? Limits::min() : Limits::max();
    return negative ? static_cast<Integer>(-magnitude) : magnitude;
}

template <class Integer>
Integer integerInFront(std::string_view text) {
    text = withoutLeadingSpace(text);
    const bool negative = takeSign(text);
    return startsWithDigit(text) ? leadingInteger<Integer>(text, negative) : 0;
}

} // namespace

std::string formatted(std::string_view format, std::initializer_list<FormatArgument> arguments) {
    std::string text;
    text.reserve(format.size() + 16); // what most arguments add at most
    std::size_t next = 0;
    for (std::size_t at; (at = format.find('%')) != std::string_view::npos;) {
        text.append(format.substr(0, at));
        format.remove_prefix(at);
        const Placeholder placeholder = leadingPlaceholder(format);
        const std::size_t number = placeholder.number ? placeholder.number - 1 : next;
        const bool replaced = placeholder.length > 0 && number < arguments.size();
        text.append(replaced ? std::string_view(arguments.begin()[number].text()) : "%");
        if (replaced && placeholder.number == 0)
            ++next;
        format.remove_prefix(replaced ? placeholder.length : 1);
    }
    text.append(format);
    return text;
}

std::string numberedKey(std::string_view prefix, std::int32_t number) {
    char digits[11]; // a sign and ten digits
    char* end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    std::string key;
    key.reserve(prefix.size() + sizeof digits);
    key.append(prefix).append(std::begin(digits), end);
    return key;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    forEachPiece(text, separator, [&](std::string_view piece) { pieces.push_back(piece); });
    return pieces;
}

std::string removingAll(std::string_view text, std::string_view part) {
    std::string rest;
    for (std::size_t at; (at = text.find(part)) != std::string_view::npos;) {
        rest += text.substr(0, at);
        text.remove_prefix(at + part.size());
    }
    return rest += text;
}

std::int32_t integerValue(std::string_view text) {
    return integerInFront<std::int32_t>(text);
}

std::int64_t longIntegerValue(std::string_view text) {
    return integerInFront<std::int64_t>(text);
}

std::uint64_t unsignedInteger(std::string_view text) {
    const std::string terminated(text);
    return std::strtoull(terminated.c_str(), nullptr, 0);
}

std::optional<std::int64_t> decimalInteger(std::string_view text) {
    const bool negative = takeSign(text);
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view whole = text.substr(0, point);
    const std::string_view fraction = text.substr(std::min(point + 1, text.size()));
    if (whole.empty() || !std::ranges::all_of(whole, isDigit) ||
        !std::ranges::all_of(fraction, isDigit))
        return {};
    return leadingInteger<std::int64_t>(whole, negative);
}

} // namespace vx
