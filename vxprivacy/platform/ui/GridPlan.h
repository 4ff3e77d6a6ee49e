#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx {

/// Where the children of a container stand: rows and columns, as any toolkit with a grid can lay
/// them out. docs/layout.md has the rules that lead here, with a picture.
///
/// A title that fills what a switch beside it leaves ("H:|[title]-[switch]|") becomes two columns.
/// The first fills; the second is as wide as its content, with a gap of 8 points before it.
struct VXPRIVACY_EXPORT GridPlan {
    /// Where an item stands in its tracks when it is smaller than they are. Start is left or top,
    /// right in a script that runs from there.
    enum class Alignment { Start, Centre, End, Stretch };

    /// A length along one axis.
    struct Length {
        /// Points or a share, never negative.
        double value = 0;
        /// A share of the screen's width (0.8 is four fifths) in place of points.
        bool share = false;

        friend bool operator==(const Length&, const Length&) = default;
    };

    /// What limits a width or a height; without any of the three it is the content's own. An exact
    /// width is narrower where there is no room for it, and a height grows with the text.
    struct Size {
        std::optional<Length> exact; ///< the limits, absent where there is none
        std::optional<Length> least; ///< the same
        std::optional<Length> most;  ///< the same

        friend bool operator==(const Size&, const Size&) = default;
    };

    /// An item along one axis. Margins are points, never negative.
    struct Place {
        std::size_t first = 0;                  ///< track, from 0
        std::size_t last = 1;                   ///< one past the last track
        double before = 0;                      ///< margin at the leading edge or the top
        double after = 0;                       ///< margin at the other edge
        Alignment alignment = Alignment::Start; ///< within the tracks
        Size size;                              ///< what limits it
    };

    /// One subview and its place.
    struct Item {
        View* view = nullptr; ///< a subview of the container
        Place column;         ///< on the horizontal axis
        Place row;            ///< on the vertical one
        /// A subview of `view` whose height it has; null: it is as high as its content.
        const View* asHighAs = nullptr;
    };

    /// Rows have no such thing: their gaps are the margins of the items.
    struct Column {
        double gap = 0;    ///< points before it, belonging to no column
        bool fills = true; ///< an equal part of the room that the others leave; else its content
    };

    /// Every subview once, as the eye reads: by row, then by column.
    std::vector<Item> items;
    /// At least one, and at least one that fills.
    std::vector<Column> columns;
    /// Points after the last column.
    double gapAfterColumns = 0;
    /// Of each row: whether it fills the height that the others leave; else it is as high as its
    /// content.
    std::vector<bool> rowFills;
    /// The content may be higher than the container and scrolls in it.
    bool scrolls = false;
};

} // namespace vx
