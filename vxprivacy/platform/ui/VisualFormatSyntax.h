#pragma once

#include "vxprivacy/platform/ui/LayoutConstraint.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vx {

/// A visual-format string taken apart, nothing in it resolved yet. Names view into the string.
struct VisualFormatSyntax {
    /// A number as written, or the name of a metric or view.
    using Operand = std::variant<double, std::string_view>;

    struct Predicate {
        LayoutConstraint::Relation relation = LayoutConstraint::Relation::Equal;
        Operand object;
        std::optional<Operand> priority;
    };

    struct Item {
        std::string_view name; ///< "|" for the superview
        std::size_t place = 0; ///< characters from the start of the string
        /// How many of `predicates` are this item's: its sizes, then the gaps to its successor.
        std::size_t sizes = 0;
        std::size_t gaps = 0;

        bool isSuperview() const { return name == "|"; }
    };

    bool vertical = false;
    std::vector<Item> items;
    std::vector<Predicate> predicates; ///< of all items, in order
};

/// Why a string is no visual format.
struct VisualFormatError {
    std::string reason;
    std::size_t place = 0; ///< characters from the start of the string
};

std::variant<VisualFormatSyntax, VisualFormatError> parseVisualFormat(std::string_view format);

} // namespace vx
