#pragma once

#include <cstddef>
#include <string>

#include "vxprivacy/hosts/web/Theme.h"
#include "vxprivacy/platform/ui/GridPlan.h"
#include "vxprivacy/platform/ui/Label.h"

// CSS declarations for what a view's properties and its plan say. 1 point is 1 CSS pixel, in a font
// size 1/16 of the user's text size.

namespace vx::web {

/// Colours, font, border, tint and scale of a view.
std::string look(const View& view, Colours colours);
/// Colour and line of the words that lead somewhere.
std::string look(const Label::Link& link);
/// Whether the items follow one another, a row each.
bool isStack(const GridPlan& plan);
/// The columns and rows of a container.
std::string grid(const GridPlan& plan);
/// That a container is as high as one of its subviews, where another rule says so.
struct Height {
    const View* of = nullptr; ///< null: it is as high as its content
    /// Points of empty room below the container, into which its content may hang.
    double room = 0;
};

/// Where an item of a plan stands; `stack`: whether `isStack` says so of it, in a container of this
/// height.
std::string placement(const GridPlan& plan, const GridPlan::Item& item, bool stack,
                      const Height& height);
/// The height of the container that is item `index` of the plan.
Height heightOf(const GridPlan& plan, std::size_t index);

} // namespace vx::web
