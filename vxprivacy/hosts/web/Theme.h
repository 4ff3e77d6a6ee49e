#pragma once

#include <string>

#include "vxprivacy/platform/ui/View.h"

namespace vx::web {

/// Whether the screen's colours are its own or left to the platform, so that a dark page may
/// replace the screen's white.
enum class Colours { Own, Platform };

/// The white that screens set where a configuration sets nothing.
inline constexpr Colour kWhite = {1, 1, 1, 1};

/// `Platform` when nothing in the tree has a colour of its own except links and white.
Colours coloursOf(const View& root);

/// Declarations for what stands around the screen and goes with it: the tokens of the style sheet
/// that the screen's colours decide, and `--kept`, what the screen keeps free at its top.
std::string frame(const View& root);

} // namespace vx::web
