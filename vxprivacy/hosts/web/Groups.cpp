#include "vxprivacy/hosts/web/Groups.h"

#include <algorithm>

#include "vxprivacy/platform/ui/Label.h"

namespace vx::web {

namespace {

// Few enough that little is laid out in vain, enough that a browser has few runs to watch.
constexpr std::size_t kRowsOfRun = 10;

bool isSame(const std::weak_ptr<Label>& one, const std::weak_ptr<Label>& other) {
    return !one.owner_before(other) && !other.owner_before(one);
}

} // namespace

bool isItemAlone(const GridPlan& plan, std::size_t index) {
    const Row* row = plan.items[index].view->row().get();
    if (!row || row->section.expired())
        return false;
    const auto belongs = [&](std::size_t other) {
        const Row* neighbour =
            other < plan.items.size() ? plan.items[other].view->row().get() : nullptr;
        return neighbour && (neighbour == row ||
                             (isSame(neighbour->section, row->title) && !row->title.expired()));
    };
    return !belongs(index - 1) && !belongs(index + 1); // before the first one stands none
}

void Groups::moveTo(const View& view, bool alone) {
    const Row* row = view.row().get();
    if (!row)
        return moveOut();
    if (!open_.empty() && open_.back().row == row)
        return;
    while (!open_.empty() && !takes(open_.back(), *row))
        close();
    openList(*row);
    if (!alone || view.kind() == View::Kind::View) // texts are short
        openRun(*row);
    ++rowsOfRun_;
    if (!alone)
        openRow(*row);
}

void Groups::openList(const Row& row) {
    const auto section = row.section.lock();
    if (!section || (!open_.empty() && open_.back().heading))
        return;
    // One that has the screen's own heading is all of the screen.
    open(section->headingLevel() == 1 ? "list searchable" : "list", "list", row.section);
    open_.push_back({.kind = Kind::List, .heading = section.get()});
}

// One is open at a time: what a row has below it lies in the row's.
void Groups::openRun(const Row& row) {
    if (length_ == Length::Short || isOpen(Kind::Row) || isOpen(Kind::Run))
        return;
    open("run", "", {});
    open_.push_back({.kind = Kind::Run, .heading = row.section.lock().get()});
    rowsOfRun_ = 0;
}

void Groups::openRow(const Row& row) {
    row.section.expired() ? open("entry", "group", row.title) : open("entry", "listitem", {});
    open_.push_back({.kind = Kind::Row, .row = &row});
}

void Groups::moveOut() {
    while (!open_.empty())
        close();
}

// Whether a row may stand in this group.
bool Groups::takes(const Group& group, const Row& row) const {
    const auto section = row.section.lock();
    switch (group.kind) {
    case Kind::List:
        return group.heading == section.get();
    case Kind::Run:
        return group.heading == section.get() && rowsOfRun_ < kRowsOfRun;
    default:
        return section && group.row->title.lock() == section;
    }
}

bool Groups::isOpen(Kind kind) const {
    return std::ranges::find(open_, kind, &Group::kind) != open_.end();
}

void Groups::open(std::string_view kind, std::string_view role, const std::weak_ptr<Label>& name) {
    markup_.open("div").attribute("class", std::string(kind) + " " + layout_);
    if (!role.empty())
        markup_.attribute("role", role);
    if (const auto label = name.lock(); label && !label->text().empty())
        markup_.attribute("aria-labelledby", elements_.of(*label).id());
    markup_.close();
}

void Groups::close() {
    markup_.end("div");
    open_.pop_back();
}

} // namespace vx::web
