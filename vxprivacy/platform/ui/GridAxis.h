#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/GridPlan.h"

namespace vx {

/// The rules along one axis among the children of a container, and the tracks they lead to. Tracks
/// are columns on the horizontal axis and rows on the vertical one; both are planned alike. The
/// work of `gridPlan`, which fills this in; docs/layout.md has the rules.
///
/// Children go by their number, from 0, in the order of the subviews.
struct VXPRIVACY_EXPORT GridAxis {
    /// What the rules say of one child.
    struct Child {
        /// Gap to the container's edge, in points, where a rule holds the child to it.
        std::optional<double> start, end;
        GridPlan::Size size;
        /// Held to the container's size along this axis.
        bool asLargeAsContainer = false;
        /// The child on whose middle this one is centred.
        std::optional<std::size_t> centredOn;
        /// Centred on a sibling, or a sibling on it, or on the container.
        bool centred = false;
        /// Shares its size with a sibling.
        bool equalSize = false;
    };

    /// The child `after` follows the child `before`.
    struct Link {
        std::size_t before = 0; ///< number of a child
        std::size_t after = 0;  ///< number of a child
        double gap = 0;         ///< points between the two
    };

    /// Where the children stand.
    struct Result {
        /// Of each child, by its number.
        std::vector<GridPlan::Place> places;
        /// Children that no rule puts anywhere; their places span all tracks.
        std::vector<bool> loose;
        /// At least 1, also without children.
        std::size_t tracks = 1;
        /// How many of the tracks, the last ones, belong to chains that are held to the container's
        /// end and not to its start.
        std::size_t tail = 0;
    };

    /// Puts each child into the track of its rank in the chain. Nothing when the links run in a
    /// circle. Time: n log n in children and links.
    std::optional<Result> arrange() const;

    /// One for each subview, those too that no rule concerns.
    std::vector<Child> children;
    std::vector<Link> links;
};

} // namespace vx
