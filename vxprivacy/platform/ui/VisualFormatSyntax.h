#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/LayoutConstraint.h"

namespace vx {

/// A visual-format string taken apart, nothing in it resolved yet: it does not matter here which
/// views and metrics there are. Names view into the string, which must outlive this.
///
/// "|-|", the superview held to itself, has no items. "H:|-[a(20)]" has the items "|" and "a". "|"
/// has one gap, of 8; "a" has one size, of 20.
struct VXPRIVACY_EXPORT VisualFormatSyntax {
    /// A number as written, or the name of a metric or view.
    using Operand = std::variant<double, std::string_view>;

    /// A size or a gap: ">=20@750" has all three parts.
    struct Predicate {
        /// How the size or gap stands to `object`.
        LayoutConstraint::Relation relation = LayoutConstraint::Relation::Equal;
        Operand object; ///< the length
        /// Absent: required.
        std::optional<Operand> priority;
    };

    /// A view, or the superview at either end.
    struct Item {
        std::string_view name; ///< "|" for the superview
        std::size_t place = 0; ///< characters from the start of the string
        /// How many of `predicates` are this item's: its sizes, then the gaps to its successor.
        std::size_t sizes = 0;
        std::size_t gaps = 0;

        /// Whether it is "|".
        bool isSuperview() const { return name == "|"; }
    };

    bool vertical = false; ///< "V:"
    /// In the order of the string; at least one of them is a view, or there is none.
    std::vector<Item> items;
    std::vector<Predicate> predicates; ///< of all items, in order
};

/// Why a string is no visual format, as far as its first fault.
struct VXPRIVACY_EXPORT VisualFormatError {
    std::string reason;    ///< for the log: "a number is missing"
    std::size_t place = 0; ///< characters from the start of the string
};

/// Takes `format` apart, or says why it cannot. Throws nothing. Time: the length of the string.
VXPRIVACY_EXPORT std::variant<VisualFormatSyntax, VisualFormatError>
parseVisualFormat(std::string_view format);

} // namespace vx
