#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// A value for a placeholder of `formatted`: a text, a text that may be missing, or an integer.
class FormatArgument {
public:
    FormatArgument(std::string_view text) : text_(text) {}
    FormatArgument(const std::string& text) : text_(text) {}
    FormatArgument(const char* text) : text_(text) {}
    FormatArgument(const std::optional<std::string>& text) : text_(text ? *text : "(null)") {}
    FormatArgument(std::int32_t number) : text_(std::to_string(number)) {}

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// `format` with its placeholders "%@" and "%d" replaced by the arguments in turn. A missing text
/// prints as "(null)"; a placeholder without an argument stays as it stands.
std::string formatted(std::string_view format, std::initializer_list<FormatArgument> arguments);

/// `prefix` followed by `number` in decimal: the name of a numbered consent key.
std::string numberedKey(std::string_view prefix, std::int32_t number);

/// Calls `action` with each of the pieces of `text` between its `separator`s, in turn; a text that
/// ends with one ends with an empty piece. The pieces view into `text`.
template <std::invocable<std::string_view> Action>
void forEachPiece(std::string_view text, char separator, Action action) {
    for (std::size_t end; (end = text.find(separator)) != std::string_view::npos;) {
        action(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    action(text);
}

/// The same pieces as a list.
std::vector<std::string_view> split(std::string_view text, char separator);
/// The pieces would outlive a temporary text.
template <std::same_as<std::string> Text>
std::vector<std::string_view> split(Text&& text, char separator) = delete;

/// `text` with every occurrence of `part` left out.
std::string removingAll(std::string_view text, std::string_view part);

/// The decimal integer that `text` starts with, after white space and a sign; 0 when there is none.
/// Values outside 32 bits give the nearest one inside.
std::int32_t integerValue(std::string_view text);
/// The same for 64 bits.
std::int64_t longIntegerValue(std::string_view text);

/// `text` read as C's strtoull does with base 0: after white space, "0x" means hexadecimal, a
/// leading zero octal, all else decimal. 0 when it is no number.
std::uint64_t unsignedInteger(std::string_view text);

/// The whole of `text` read as a decimal number and cut to an integer. Absent when anything in it
/// is not part of the number.
std::optional<std::int64_t> decimalInteger(std::string_view text);

} // namespace vx
