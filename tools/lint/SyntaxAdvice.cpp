#include "tools/lint/SyntaxAdvice.h"

#include <optional>
#include <string>

namespace vx::tools::lint {

namespace {

// What is wrong and where, and how it is mended.
struct Mistake {
    std::size_t offset;
    std::string reason;
    std::string remedy;
};

bool expects(const Fault& fault, std::string_view what) {
    return fault.reason.ends_with("; expected " + std::string(what));
}

bool isUTF16(std::string_view text) {
    using namespace std::string_view_literals;
    const std::string_view start = text.substr(0, 2);
    return start == "\xFF\xFE"sv || start == "\xFE\xFF"sv || start == "{\0"sv || start == "\0{"sv ||
           start == "[\0"sv || start == "\0["sv;
}

std::optional<Mistake> mistakeOfEncoding(std::string_view text, std::size_t end) {
    if (isUTF16(text))
        return Mistake{0, "it is in UTF-16", "Save it in UTF-8."};
    if (text.starts_with("\xEF\xBB\xBF"))
        return Mistake{0, "it begins with a byte-order mark", "Save it in UTF-8 without one."};
    if (const auto zero = text.find('\0'); zero <= end)
        return Mistake{zero, "there is a NUL character here",
                       "Take it out; what is behind it may be no text at all."};
    return {};
}

// Between two tokens of which the reader expected other than the second.
std::optional<Mistake> mistakeBetween(std::string_view text, std::size_t before, std::size_t token,
                                      const Fault& fault) {
    const bool isValue = std::string_view("\"{[-0123456789tfn").find(text[token]) != text.npos;
    if (isValue && (expects(fault, "'}'") || expects(fault, "']'")))
        return Mistake{before + 1, "a comma is missing here", "Put one in."};
    if (isValue && expects(fault, "':'"))
        return Mistake{before + 1, "a colon is missing here", "Put one in."};
    if (text[before] == ',' && (text[token] == '}' || text[token] == ']'))
        return Mistake{before, "there is a comma behind the last of a list", "Take it out."};
    return {};
}

std::optional<Mistake> mistakeAt(std::string_view text, const Fault& fault) {
    const std::string_view rest = text.substr(fault.token);
    if (rest.starts_with("//") || rest.starts_with("/*") || rest.starts_with('#'))
        return Mistake{fault.token, "there is a comment here", "Take it out; JSON has none."};
    if (rest.starts_with('\''))
        return Mistake{fault.token, "there is a single quotation mark here",
                       "Put names and texts between \"double\" ones."};
    const std::size_t before = text.substr(0, fault.token).find_last_not_of(" \t\r\n");
    if (before == text.npos || rest.empty())
        return {};
    return mistakeBetween(text, before, fault.token, fault);
}

} // namespace

SyntaxFinding explain(std::string_view text, const Fault& fault) {
    auto mistake = mistakeOfEncoding(text, fault.offset);
    if (!mistake)
        mistake = mistakeAt(text, fault);
    if (!mistake)
        mistake = {fault.offset, fault.reason, "Correct the text here or a little before."};
    return {{"", mistake->offset},
            {"The text is not valid JSON: " + mistake->reason + ".", std::string(kNotInstalled),
             mistake->remedy}};
}

} // namespace vx::tools::lint
