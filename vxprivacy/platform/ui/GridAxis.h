#pragma once

#include "vxprivacy/platform/ui/GridPlan.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace vx {

/// The rules along one axis among the children of a container, and the tracks they lead to.
struct GridAxis {
    struct Child {
        /// Gap to the container's edge, in points, where a rule holds the child to it.
        std::optional<double> start, end;
        GridPlan::Size size;
        bool asLargeAsContainer = false;
        /// The child on whose middle this one is centred.
        std::optional<std::size_t> centredOn;
        bool centred = false;
        /// Shares its size with a sibling.
        bool equalSize = false;
    };

    /// `after` follows `before` at a distance, in points.
    struct Link {
        std::size_t before = 0;
        std::size_t after = 0;
        double gap = 0;
    };

    struct Result {
        std::vector<GridPlan::Place> places;
        /// Children that no rule puts anywhere; their places span all tracks.
        std::vector<bool> loose;
        std::size_t tracks = 1;
        /// How many of the tracks count from the end, of which a chain hangs that nothing holds to
        /// the start.
        std::size_t tail = 0;
    };

    /// Nothing when the links run in a circle.
    std::optional<Result> arrange() const;

    std::vector<Child> children;
    std::vector<Link> links;
};

} // namespace vx
