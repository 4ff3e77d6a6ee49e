#include "vxprivacy/hosts/web/Names.h"

#include "vxprivacy/platform/ui/ControlNames.h"

namespace vx::web {

namespace {

unsigned numberOf(Label* label, Elements& elements) {
    return label ? elements.of(*label).number : 0;
}

void nameSwitch(Elements& elements, Element& element, const ControlNames& labels) {
    const auto& [title, own, description] = labels;
    element.title = numberOf(title, elements);
    element.text = own != title ? numberOf(own, elements) : 0;
    element.counts = own && own->count();
    element.description = numberOf(description, elements);
    if (description)
        elements.of(*description).describes = true;
}

} // namespace

std::string countId(const std::string& label) {
    return label + "c";
}

std::string namesOf(const Element& control) {
    if (control.title != 0 && control.text != 0) // "Title: own text"
        return control.id() + " " + idOf(control.text);
    if (control.title == 0 && control.text == 0)
        return std::string(kPageTitle);
    return idOf(control.title != 0 ? control.title : control.text);
}

std::string descriptionsOf(const Element& control) {
    std::string ids;
    if (control.counts)
        ids = countId(idOf(control.text != 0 ? control.text : control.title));
    if (control.description != 0)
        ids.append(ids.empty() ? "" : " ").append(idOf(control.description));
    return ids;
}

void nameControls(Elements& elements, View& container, const GridPlan& plan) {
    const auto following = elements.view(elements.of(container).following);
    for (const auto& item : plan.items) {
        const View::Kind kind = item.view->kind();
        if (kind != View::Kind::Switch && kind != View::Kind::Button)
            continue;
        const ControlNames labels = controlNames(plan, item, following.get());
        Element& element = elements.of(*item.view);
        if (kind == View::Kind::Switch)
            nameSwitch(elements, element, labels);
        else // its own title says what it does, the row's for what
            element.title = numberOf(labels.title, elements);
    }
}

} // namespace vx::web
