#include "vxprivacy/hosts/web/Names.h"

#include <string>
#include <string_view>
#include <utility>

#include "vxprivacy/platform/ui/ControlNames.h"

namespace vx::web {

namespace {

void add(std::string& ids, std::string_view id) {
    ids.append(ids.empty() ? "" : " ").append(id);
}

void nameSwitch(Elements& elements, Element& element, const ControlNames& labels) {
    const auto& [title, own, description] = labels;
    std::string names;
    std::string descriptions;
    if (labels.both()) // "Title: own text"
        add(names, element.id);
    else if (title)
        add(names, elements.of(*title).id);
    if (own && own != title)
        add(names, elements.of(*own).id);
    if (own && own->count())
        add(descriptions, countId(elements.of(*own).id));
    if (description) {
        elements.of(*description).describes = true;
        add(descriptions, elements.of(*description).id);
    }
    element.label = labels.both() ? title->text() + ":" : "";
    element.names = names.empty() ? kPageTitle : names;
    element.descriptions = std::move(descriptions);
}

} // namespace

std::string countId(const std::string& label) {
    return label + "c";
}

void nameControls(Elements& elements, View& container, const GridPlan& plan) {
    const auto following = elements.of(container).following.lock();
    for (const auto& item : plan.items) {
        const View::Kind kind = item.view->kind();
        if (kind != View::Kind::Switch && kind != View::Kind::Button)
            continue;
        const ControlNames labels = controlNames(plan, item, following.get());
        Element& element = elements.of(*item.view);
        if (kind == View::Kind::Switch)
            nameSwitch(elements, element, labels);
        else // its own title says what it does, the row's for what
            element.names = labels.title ? element.id + " " + elements.of(*labels.title).id : "";
    }
}

} // namespace vx::web
