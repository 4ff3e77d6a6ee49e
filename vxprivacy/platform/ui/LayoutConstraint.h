#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace vx {

class View;

/// The visual-format text that constraints were made from, with its alignment options.
struct VisualFormat {
    std::string text;
    int options = 0;
};

/// One rule of a layout: first item's attribute, relation, second item's attribute plus constant.
struct LayoutConstraint {
    // Screens have thousands of constraints: their members are small and lie close.
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

    std::weak_ptr<View> firstItem;
    /// Empty, with the attribute None, where the constant stands alone.
    std::weak_ptr<View> secondItem;
    Attribute firstAttribute = Attribute::None;
    Relation relation = Relation::Equal;
    Attribute secondAttribute = Attribute::None;
    /// The constant was a metric's value, computed from the screen's size, not written as a number.
    bool metric = false;
    double constant = 0; ///< points
    double priority = 1000;

    /// What it was made from.
    std::shared_ptr<const VisualFormat> format;
};

} // namespace vx
