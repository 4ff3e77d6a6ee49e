#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"

// Small functions on UTF-8 text. They look at bytes, never at the language or its rules, so the
// same text gives the same result on every machine. None fails. Any thread.

namespace vx {

/// A value for a placeholder of `formatted`: a text, a text that may be missing, or an integer.
/// Made in the call and copied from what it is given.
class VXPRIVACY_EXPORT FormatArgument {
public:
    /// Of a text, a text that may be missing, or an integer.
    FormatArgument(std::string_view text) : text_(text) {}
    FormatArgument(const std::string& text) : text_(text) {}
    FormatArgument(const char* text) : text_(text) {}
    FormatArgument(const std::optional<std::string>& text) : text_(text ? *text : "(null)") {}
    FormatArgument(std::int32_t number) : text_(std::to_string(number)) {}

    /// What is put in the placeholder's place.
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// `format` with its placeholders "%@" and "%d" replaced by the arguments in turn, and "%1$@" to
/// "%9$@" by the argument of that number. All take any argument. A missing text prints as
/// "(null)"; a placeholder without an argument stays as it stands; an argument without a
/// placeholder is left out; any other "%" is text.
///
///     formatted("%@ of %d", {"one", 3});                   // "one of 3"
///     formatted("%@", {std::optional<std::string>()});     // "(null)"
///     formatted("%d%%, %@", {5});                          // "5%%, %@"
///     formatted("%2$@ before %1$@", {"b", "a"});          // "a before b"
VXPRIVACY_EXPORT std::string formatted(std::string_view format,
                                       std::initializer_list<FormatArgument> arguments);

/// `prefix` followed by `number` in decimal: a consent key. Faster than `formatted`, for thousands.
///
///     numberedKey("PRIVACY_CAT_", 3);   // "PRIVACY_CAT_3"
VXPRIVACY_EXPORT std::string numberedKey(std::string_view prefix, std::int32_t number);

/// Calls `action` with each of the pieces of `text` between its `separator`s, in turn. There is one
/// piece more than separators: "a;b;" has "a", "b" and "", and the empty text has "". The pieces
/// view into `text`.
template <std::invocable<std::string_view> Action>
void forEachPiece(std::string_view text, char separator, Action action) {
    for (std::size_t end; (end = text.find(separator)) != std::string_view::npos;) {
        action(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    action(text);
}

/// The same pieces as a list. They view into `text`, which must outlive them.
VXPRIVACY_EXPORT std::vector<std::string_view> split(std::string_view text, char separator);
/// Not for a temporary text: the pieces would outlive it.
template <std::same_as<std::string> Text>
std::vector<std::string_view> split(Text&& text, char separator) = delete;

/// `text` with every occurrence of `part`, which is not empty, left out. What comes together by
/// that is not looked at again.
VXPRIVACY_EXPORT std::string removingAll(std::string_view text, std::string_view part);

// Numbers from text. Each has its own rules, since what was once read by them is still stored.

/// The decimal integer that `text` starts with, after white space and a sign; 0 when there is none.
/// Values outside 32 bits give the nearest one inside. "12 vendors" is 12, "x12" is 0.
VXPRIVACY_EXPORT std::int32_t integerValue(std::string_view text);
/// The same for 64 bits.
VXPRIVACY_EXPORT std::int64_t longIntegerValue(std::string_view text);

/// `text` read as C's strtoull does with base 0: after white space, "0x" means hexadecimal, a
/// leading zero octal, all else decimal; what follows the number is ignored. 0 when it starts with
/// no number. A negative one wraps round, one that does not fit gives the greatest.
VXPRIVACY_EXPORT std::uint64_t unsignedInteger(std::string_view text);

/// The whole of `text` read as a decimal number and cut to an integer: "12.9" is 12. Absent when
/// anything in it, white space included, is not part of the number. Values outside 64 bits give the
/// nearest one inside.
VXPRIVACY_EXPORT std::optional<std::int64_t> decimalInteger(std::string_view text);

} // namespace vx
