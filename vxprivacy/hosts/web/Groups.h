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
/// a heading. A list stands in the row of its heading where that comes right before it. In a long
/// container the rows stand in runs, each of which a browser lays out only when it comes near.
///
///     Groups groups(markup, elements, "g7", Groups::Length::Long);
///     for (const auto& item : plan.items) {
///         groups.moveTo(*item.view, false);
///         ...                         // write the item
///     }
///     groups.moveOut();
class Groups {
public:
    enum class Length { Short, Long };

    /// `layout` is the class that lays the items out as the container does.
    Groups(Markup& markup, Elements& elements, std::string layout, Length length)
        : markup_(markup), elements_(elements), layout_(std::move(layout)), length_(length) {}

    /// `alone` as `isItemAlone` says of the item: then its element is no more than in a list.
    void moveTo(const View& view, bool alone);
    void moveOut();

private:
    enum class Kind { List, Run, Row };
    struct Group {
        Kind kind;
        const Row* row = nullptr;       // that it is
        const Label* heading = nullptr; // of the list that it is or lies in
    };

    bool takes(const Group& group, const Row& row) const;
    bool isOpen(Kind kind) const;
    void openList(const Row& row);
    void openRun(const Row& row);
    void openRow(const Row& row);
    void open(std::string_view kind, std::string_view role, const std::weak_ptr<Label>& name);
    void close();

    Markup& markup_;
    Elements& elements_;
    std::string layout_;
    Length length_;
    std::vector<Group> open_;
    std::size_t rowsOfRun_ = 0;
};

} // namespace vx::web
