#pragma once

#include <memory>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx {

/// Views by layout name: letters, digits and "_". An entry that is null counts as none.
using ViewsDictionary = OrderedDictionary<std::shared_ptr<View>>;
/// Points by name. Where a view has the same name, the metric is meant.
using MetricsDictionary = OrderedDictionary<double>;

/// Alignment options of a visual format, to be added up: the middles of all views that it names lie
/// on one line, down the screen (X) or across it (Y).
inline constexpr int kAlignAllCentreX = 512;
inline constexpr int kAlignAllCentreY = 1024;

/// A visual-format string with the constraints that it describes, resolved now:
///
///     H:|-10-[title]-[button(oneFourthH)]|     V:[row(==title)]     [a(>=20@750)]-(<=8)-[b]
///
/// "H:" goes along the lines of text and may be left out, "V:" goes down. "|" is the superview of
/// the view beside it. "-" alone is the standard gap, 8 points; without it the two touch. In
/// parentheses stand the sizes of a view or gap: numbers and metrics, in points, or for a view
/// another view to be as large as. Each may have a relation before it ("==" unless said) and a
/// priority behind it ("@", 1000 unless said).
///
/// A string that does not parse, names an unknown view or metric, or has a "|" beside a view that
/// is in none, gives no constraint at all and one log line at level 4 with the string and the
/// place. A chain without a view ("V:|-|", "V:|-10-|") gives none either, and is no fault. Time:
/// the length of the string. `views` owns; the constraints only point.
VXPRIVACY_EXPORT VisualFormat constraintsWithVisualFormat(std::string_view format, int options,
                                                          const MetricsDictionary& metrics,
                                                          const ViewsDictionary& views);

} // namespace vx
