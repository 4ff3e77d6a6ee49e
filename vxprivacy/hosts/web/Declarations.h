#pragma once

#include <string>
#include <vector>

#include "vxprivacy/platform/ui/GridPlan.h"

// CSS declarations for what a view's properties and its plan say. 1 point is 1 CSS pixel, in a font
// size 1/16 of the user's text size.

namespace vx::web {

/// Whether the screen's colours are its own or left to the platform, so that a dark page may
/// replace the screen's white.
enum class Colours { Own, Platform };

/// Colours, font, border, tint and scale of a view.
std::string look(const View& view, Colours colours);
/// The columns and rows of a container.
std::string grid(const GridPlan& plan);
/// Where each item of the plan stands.
std::vector<std::string> placements(const GridPlan& plan);

/// `Platform` when nothing in the tree has a colour of its own except links and white.
Colours coloursOf(const View& root);

} // namespace vx::web
