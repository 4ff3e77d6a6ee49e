#pragma once

#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/ui/View.h"

#include <memory>
#include <string_view>

namespace vx {

/// Views by layout name.
using ViewsDictionary = OrderedDictionary<std::shared_ptr<View>>;
/// Points by name.
using MetricsDictionary = OrderedDictionary<double>;

/// Alignment options of a visual format, to be added up.
inline constexpr int kAlignAllCentreX = 512;
inline constexpr int kAlignAllCentreY = 1024;

/// A visual-format string with the constraints that it describes, resolved now:
///
///     H:|-10-[title]-[button(oneFourthH)]|     V:[row(==title)]     [a(>=20@750)]-(<=8)-[b]
///
/// "|" is the superview of the first view named. "-" alone is the standard gap, 8 points. A string
/// that does not parse, or that names an unknown view or metric, gives no constraint and one log
/// line at level 4 with the string and the place.
VisualFormat constraintsWithVisualFormat(std::string_view format, int options,
                                         const MetricsDictionary& metrics,
                                         const ViewsDictionary& views);

} // namespace vx
