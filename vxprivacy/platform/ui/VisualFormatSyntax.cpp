// The parser of visual-format strings. It knows the grammar and no views.

#include "vxprivacy/platform/ui/VisualFormatSyntax.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <fast_float/fast_float.h>

namespace vx {

namespace {

using Predicate = VisualFormatSyntax::Predicate;
using Operand = VisualFormatSyntax::Operand;
using Relation = LayoutConstraint::Relation;

constexpr double kStandardGap = 8; // between siblings and to the superview alike

bool startsNumber(char c) {
    return (c >= '0' && c <= '9') || c == '.';
}

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// A recursive-descent parser; every production leaves at the first error by throwing it, and
// `parseVisualFormat` turns it into the result.
class Parser {
public:
    explicit Parser(std::string_view text) : text_(text) {}

    VisualFormatSyntax format() {
        const auto items = std::ranges::count(text_, '[') + 2; // and the superview on each side
        syntax_.items.reserve(static_cast<std::size_t>(items));
        syntax_.predicates.reserve(static_cast<std::size_t>(items));
        syntax_.vertical = take("V:");
        if (!syntax_.vertical)
            take("H:");
        item();
        while (at_ < text_.size()) {
            gap();
            item();
            if (syntax_.items.back().isSuperview())
                break;
        }
        if (at_ < text_.size())
            fail("nothing may follow the superview");
        const auto isSuperview = [](const auto& each) { return each.isSuperview(); };
        if (std::ranges::all_of(syntax_.items, isSuperview)) {
            if (!text_.ends_with("-|"))
                fail("a view is missing");
            return {};
        }
        return std::move(syntax_);
    }

private:
    [[noreturn]] void fail(std::string reason) const {
        throw VisualFormatError{std::move(reason), at_};
    }

    bool take(std::string_view token) {
        if (!text_.substr(at_).starts_with(token))
            return false;
        at_ += token.size();
        return true;
    }

    void expect(std::string_view token) {
        if (!take(token))
            fail("\"" + std::string(token) + "\" is missing");
    }

    char next() const { return at_ < text_.size() ? text_[at_] : '\0'; }

    std::string_view name() {
        const std::size_t start = at_;
        while (isNameCharacter(next()))
            ++at_;
        if (at_ == start)
            fail("a name is missing");
        return text_.substr(start, at_ - start);
    }

    double number() {
        double value = 0;
        const char* start = text_.data() + at_;
        // std::from_chars, which not every standard library has for floating-point numbers.
        const auto result = fast_float::from_chars(start, text_.data() + text_.size(), value,
                                                   fast_float::chars_format::fixed);
        if (result.ec != std::errc() || !std::isfinite(value))
            fail("a number is missing");
        at_ += static_cast<std::size_t>(result.ptr - start);
        return value;
    }

    Operand operand() {
        if (startsNumber(next()))
            return number();
        return name();
    }

    Relation relation() {
        if (take("<="))
            return Relation::LessThanOrEqual;
        if (take(">="))
            return Relation::GreaterThanOrEqual;
        take("==");
        return Relation::Equal;
    }

    void predicate(std::size_t& count) {
        Predicate& parsed = add({}, count);
        parsed.relation = relation();
        parsed.object = operand();
        if (take("@"))
            parsed.priority = operand();
    }

    // After the opening parenthesis.
    void predicates(std::size_t& count) {
        do
            predicate(count);
        while (take(","));
        expect(")");
    }

    Predicate& add(Operand object, std::size_t& count) {
        ++count;
        return syntax_.predicates.emplace_back(Predicate{Relation::Equal, object, {}});
    }

    void item() {
        auto& parsed = syntax_.items.emplace_back();
        parsed.place = at_;
        if (take("|")) {
            parsed.name = "|";
            return;
        }
        expect("[");
        parsed.name = name();
        if (take("("))
            predicates(parsed.sizes);
        expect("]");
    }

    void gap() {
        std::size_t& gaps = syntax_.items.back().gaps;
        if (!take("-")) {
            add(0.0, gaps);
            return;
        }
        if (next() == '[' || next() == '|') {
            add(kStandardGap, gaps);
            return;
        }
        if (take("("))
            predicates(gaps);
        else
            add(operand(), gaps);
        expect("-");
    }

    std::string_view text_;
    std::size_t at_ = 0;
    VisualFormatSyntax syntax_;
};

} // namespace

std::variant<VisualFormatSyntax, VisualFormatError> parseVisualFormat(std::string_view format) {
    try {
        return Parser(format).format();
    } catch (VisualFormatError& error) {
        return std::move(error);
    }
}

} // namespace vx
