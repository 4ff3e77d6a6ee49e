#include "vxprivacy/hosts/web/Names.h"

#include <string>
#include <string_view>
#include <utility>

#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::web {

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

void add(std::string& ids, std::string_view id) {
    ids.append(ids.empty() ? "" : " ").append(id);
}

// The texts of a control's own container: the one beside it, and the one below, which may stand
// under the container that holds the two.
struct Neighbours {
    Label* title = nullptr;
    Label* description = nullptr;
};

Neighbours neighboursOf(const GridPlan::Item& control, const GridPlan& plan,
                        const Element& around) {
    Neighbours found;
    for (const auto& other : plan.items)
        if (Label* label = textIn(*other.view); label && !found.description) {
            if (!found.title && beginsInRowOf(other, control))
                found.title = label;
            else if (other.row.first > control.row.first)
                found.description = label;
        }
    if (const auto following = around.following.lock(); !found.description && following)
        found.description = textIn(*following);
    return found;
}

class Namer {
public:
    Namer(Elements& elements, const GridPlan& plan, const Element& around, const Row* row)
        : elements_(elements), plan_(plan), around_(around),
          title_(row ? titleIn(row->title) : nullptr),
          section_(row ? titleIn(row->section) : nullptr) {}

    void nameSwitch(const GridPlan::Item& item) const {
        auto [own, description] = neighboursOf(item, plan_, around_);
        if (!own && !title_)
            own = std::exchange(description, nullptr);
        if (!own && !title_)
            own = section_;
        Element& element = elements_.of(*item.view);
        std::string names;
        std::string descriptions;
        const bool both = title_ && own && own != title_;
        if (both) // "Title: own text"
            add(names, element.id);
        else if (title_)
            add(names, elements_.of(*title_).id);
        if (own && own != title_)
            add(names, elements_.of(*own).id);
        if (own && own->count())
            add(descriptions, countId(elements_.of(*own).id));
        if (description) {
            elements_.of(*description).describes = true;
            add(descriptions, elements_.of(*description).id);
        }
        element.label = both ? title_->text() + ":" : "";
        element.names = names.empty() ? kPageTitle : names;
        element.descriptions = std::move(descriptions);
    }

    // Its own title says what it does, the row's for what.
    void nameButton(const GridPlan::Item& item) const {
        Element& element = elements_.of(*item.view);
        element.names = title_ ? element.id + " " + elements_.of(*title_).id : "";
    }

private:
    Elements& elements_;
    const GridPlan& plan_;
    const Element& around_;
    Label* title_;
    Label* section_;
};

} // namespace

std::string countId(const std::string& label) {
    return label + "c";
}

const Row* rowOf(const View& view) {
    for (const View* at = &view; at; at = at->superview())
        if (at->row())
            return at->row().get();
    return nullptr;
}

void nameControls(Elements& elements, View& container, const GridPlan& plan) {
    for (const auto& item : plan.items) {
        const View::Kind kind = item.view->kind();
        if (kind != View::Kind::Switch && kind != View::Kind::Button)
            continue;
        const Namer namer(elements, plan, elements.of(container), rowOf(*item.view));
        kind == View::Kind::Switch ? namer.nameSwitch(item) : namer.nameButton(item);
    }
}

} // namespace vx::web
