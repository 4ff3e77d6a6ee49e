#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

class View;

/// One rule of a layout: first item's attribute, relation, second item's attribute plus constant.
/// In "H:[title]-8-[switch]" it says that the switch's leading edge equals the title's trailing
/// edge plus 8. Made by `constraintsWithVisualFormat` and then only read.
struct VXPRIVACY_EXPORT LayoutConstraint {
    /// Leading is the edge where a line of text begins, trailing the one where it ends.
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
    /// How the first attribute stands to the second.
    enum class Relation : std::uint8_t { LessThanOrEqual, Equal, GreaterThanOrEqual };

    /// Never null once it is made. Neither item is owned. Both must live until the constraint is
    /// attached; from then on the view it is attached to takes it off before an item goes.
    View* firstItem = nullptr;
    /// Null, with the attribute None, where the constant stands alone.
    View* secondItem = nullptr;
    Attribute firstAttribute = Attribute::None;
    Relation relation = Relation::Equal;
    Attribute secondAttribute = Attribute::None;
    /// The constant was a metric's value, computed from the screen's size, not written as a number.
    bool metric = false;
    /// 1000 is a must, less is a wish. Kept as it was written; the grid plan does not weigh it.
    float priority = 1000;
    double constant = 0; ///< points
};

/// What a visual-format string describes, with the string itself.
struct VXPRIVACY_EXPORT VisualFormat {
    std::string text; ///< the string
    /// Sum of alignment options (VisualFormat.h); 0: none.
    int options = 0;
    /// In the order in which the string says them. Empty when it could not be understood.
    std::vector<LayoutConstraint> constraints;
};

} // namespace vx
