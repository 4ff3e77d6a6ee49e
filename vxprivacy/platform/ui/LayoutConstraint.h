#pragma once

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
    enum class Attribute { None, Leading, Trailing, Top, Bottom, Width, Height, CentreX, CentreY };
    enum class Relation { LessThanOrEqual, Equal, GreaterThanOrEqual };

    std::weak_ptr<View> firstItem;
    Attribute firstAttribute = Attribute::None;
    Relation relation = Relation::Equal;
    /// Empty, with the attribute None, where the constant stands alone.
    std::weak_ptr<View> secondItem;
    Attribute secondAttribute = Attribute::None;
    double constant = 0; ///< points
    /// The constant was a metric's value, computed from the screen's size, not written as a number.
    bool metric = false;
    double priority = 1000;

    /// What it was made from.
    std::shared_ptr<const VisualFormat> format;
};

} // namespace vx
