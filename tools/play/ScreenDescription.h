#pragma once

#include "vxprivacy/platform/ui/Colour.h"
#include "vxprivacy/platform/ui/VisualFormat.h"
#include "vxprivacy/testing/Event.h"

namespace vx::tools::play {

/// A number rounded to three decimals, without trailing zeros.
recording::Event rounded(double number);

/// [red, green, blue, alpha]
recording::Event asArray(const Colour& colour);

/// The tree below `root`, depth first, one object a view. `names` are the layout names in force; a
/// view without one is listed all the same.
recording::Event describedViews(const View& root, const ViewsDictionary& names);

} // namespace vx::tools::play
