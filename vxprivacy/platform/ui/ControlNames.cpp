#include "vxprivacy/platform/ui/ControlNames.h"

#include <memory>
#include <utility>

#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx {

namespace {

Label* textIn(View& view) {
    auto* label = viewAs<Label>(view);
    return label && !label->text().empty() ? label : nullptr;
}

// `label` if it says anything.
Label* titleIn(const std::weak_ptr<Label>& label) {
    const auto title = label.lock();
    return title ? textIn(*title) : nullptr;
}

bool beginsInRowOf(const GridPlan::Item& label, const GridPlan::Item& control) {
    return label.row.first <= control.row.first && control.row.first < label.row.last;
}

} // namespace

std::string ControlNames::text() const {
    if (both())
        return title->text() + ": " + own->text();
    const Label* one = title ? title : own;
    return one ? one->text() : "";
}

ControlNames controlNames(const GridPlan& plan, const GridPlan::Item& control, View* following) {
    ControlNames names;
    const Row* row = rowOf(*control.view);
    names.title = row ? titleIn(row->title) : nullptr;
    if (control.view->kind() == View::Kind::Button)
        return names;
    for (const auto& other : plan.items)
        if (Label* label = textIn(*other.view); label && !names.description) {
            if (!names.own && beginsInRowOf(other, control))
                names.own = label;
            else if (other.row.first > control.row.first)
                names.description = label;
        }
    if (!names.description && following)
        names.description = textIn(*following);
    if (!names.own && !names.title)
        names.own = std::exchange(names.description, nullptr);
    if (!names.own && !names.title && row)
        names.own = titleIn(row->section);
    return names;
}

const Row* rowOf(const View& view) {
    for (const View* at = &view; at; at = at->superview())
        if (at->row())
            return at->row().get();
    return nullptr;
}

} // namespace vx
