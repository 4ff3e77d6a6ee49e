#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vxprivacy/hosts/web/Elements.h"
#include "vxprivacy/hosts/web/Markup.h"
#include "vxprivacy/platform/ui/GridPlan.h"

namespace vx::web {

/// Whether an item of the plan is all of a row that is in a list, so that its element can be the
/// list's item.
bool isItemAlone(const GridPlan& plan, std::size_t index);

/// Writes around the items of a container what belongs together: rows, and lists of those that have
/// a heading. A list stands in the row of its heading where that comes right before it.
///
///     Groups groups(markup, elements, "g7");
///     for (const auto& item : plan.items) {
///         groups.moveTo(*item.view, false);
///         ...                         // write the item
///     }
///     groups.moveOut();
class Groups {
public:
    /// `layout` is the class that lays the items out as the container does.
    Groups(Markup& markup, Elements& elements, std::string layout)
        : markup_(markup), elements_(elements), layout_(std::move(layout)) {}

    /// `alone` as `isItemAlone` says of the item: then its element is no more than in a list.
    void moveTo(const View& view, bool alone);
    void moveOut();

private:
    // A list has a heading, a row has not.
    struct Group {
        const Row* row = nullptr;
        const Label* heading = nullptr;
    };

    bool takes(const Group& group, const Row& row) const;
    void openList(const Row& row);
    void open(std::string_view kind, std::string_view role, const std::weak_ptr<Label>& name);
    void close();

    Markup& markup_;
    Elements& elements_;
    std::string layout_;
    std::vector<Group> open_;
};

} // namespace vx::web
