#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vx {

class View;

/// One rule of a layout: first item's attribute, relation, second item's attribute plus constant.
struct LayoutConstraint {
    // Screens have tens of thousands of constraints: their members are small and lie close.
    enum class Attribute : std::uint8_t {
        None,
        Leading,
        Trailing,
        Top,
        Bottom,
        Width,
        Height,
        CentreX,
        CentreY
    };
    enum class Relation : std::uint8_t { LessThanOrEqual, Equal, GreaterThanOrEqual };

    /// Both must live until the constraint is attached; from then on the view it is attached to
    /// sees to it.
    View* firstItem = nullptr;
    /// Null, with the attribute None, where the constant stands alone.
    View* secondItem = nullptr;
    Attribute firstAttribute = Attribute::None;
    Relation relation = Relation::Equal;
    Attribute secondAttribute = Attribute::None;
    /// The constant was a metric's value, computed from the screen's size, not written as a number.
    bool metric = false;
    float priority = 1000;
    double constant = 0; ///< points
};

/// What a visual-format string describes, with the string and its alignment options.
struct VisualFormat {
    std::string text;
    int options = 0;
    std::vector<LayoutConstraint> constraints;
};

} // namespace vx
