#pragma once

#include <string>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/GridPlan.h"
#include "vxprivacy/platform/ui/Label.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx {

/// The labels that say what a switch or button is for, to who does not see where it stands. None of
/// them is empty of text; null where there is none.
///
///     const ControlNames names = controlNames(plan, item, nullptr);
///     names.text();   // "Copper Kettle: Consent"
struct VXPRIVACY_EXPORT ControlNames {
    /// Of its row: for what it is. Null where it belongs to no row.
    Label* title = nullptr;
    /// Beside it: what it is, where rows have several. Without `title` also the one below it, or
    /// the heading of its list; the same as `title` where that stands beside it.
    Label* own = nullptr;
    /// Below it: what more is said of it.
    Label* description = nullptr;

    /// Whether both are needed to tell it apart.
    bool both() const { return title && own && title != own; }
    /// Title and own text, "Title: own" where both are needed; empty without either.
    std::string text() const;
};

/// Those of `control`, an item of the plan of its container. `following` is what stands right after
/// the container in the plan that has it, for a description may stand below both; null: nothing. Of
/// a button `title` alone is looked for: it says itself what it does. Good until the tree changes.
VXPRIVACY_EXPORT ControlNames controlNames(const GridPlan& plan, const GridPlan::Item& control,
                                           View* following);

/// The row that `view` or the nearest view around it belongs to; null: none.
VXPRIVACY_EXPORT const Row* rowOf(const View& view);

} // namespace vx
