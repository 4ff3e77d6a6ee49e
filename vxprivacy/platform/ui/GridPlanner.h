#pragma once

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/GridPlan.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx {

/// The plan of `container`, from the constraints attached to it that concern its own subviews, or
/// give one of them the height of a view in it; all others do not count. A pure function: the tree
/// stays as it is, and the same tree gives the same plan.
///
/// Never fails: rules that contradict each other (circles, two views on one spot) leave one row for
/// each subview. `screenWidth`, in points, is the width that metrics were computed from; 0 when it
/// is not known, then widths given by metrics are left out. Time: n log n in subviews and
/// constraints. The plan points into the tree: use it before the tree changes.
VXPRIVACY_EXPORT GridPlan gridPlan(const View& container, double screenWidth);

} // namespace vx
