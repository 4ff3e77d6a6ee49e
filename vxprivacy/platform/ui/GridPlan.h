#pragma once

#include "vxprivacy/platform/ui/View.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace vx {

/// Where the children of a container stand: rows and columns, as any toolkit with a grid can lay
/// them out. docs/layout.md has the rules that lead here, with a picture.
struct GridPlan {
    enum class Alignment { Start, Centre, End, Stretch };

    struct Length {
        double value = 0;
        /// A share of the screen's width (0.8 is four fifths) in place of points.
        bool share = false;

        friend bool operator==(const Length&, const Length&) = default;
    };

    /// What limits a width or a height; absent: the content's own. An exact one gives way to the
    /// room there is, and a height to the text.
    struct Size {
        std::optional<Length> exact, least, most;

        friend bool operator==(const Size&, const Size&) = default;
    };

    /// An item along one axis. Margins are points, never negative.
    struct Place {
        std::size_t first = 0; ///< track, from 0
        std::size_t last = 1;  ///< one past the last track
        double before = 0;     ///< margin at the leading edge or the top
        double after = 0;
        Alignment alignment = Alignment::Start;
        Size size;
    };

    struct Item {
        View* view = nullptr; ///< a subview of the container
        Place column;
        Place row;
    };

    struct Column {
        double gap = 0;    ///< points before it, belonging to no column
        bool fills = true; ///< an equal part of the room that the others leave; else its content
    };

    /// Every subview once, as the eye reads: by row, then by column.
    std::vector<Item> items;
    std::vector<Column> columns;
    double gapAfterColumns = 0;
    /// A row fills the height that the others leave; else it is as high as its content.
    std::vector<bool> rowFills;
    /// The content may be higher than the container and scrolls in it.
    bool scrolls = false;
};

/// The plan of `container`, from the constraints attached to it that concern its subviews. Never
/// fails: rules that contradict each other (circles, two views on one spot) leave one row for each
/// subview. `screenWidth`, in points, is what metrics were computed from. Time: n log n in
/// subviews and constraints. The plan points into the tree.
GridPlan gridPlan(const View& container, double screenWidth);

} // namespace vx
