#include "vxprivacy/hosts/web/Classes.h"

#include <algorithm>

#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::web {

namespace {

bool isOf(View::Kind kind, const std::shared_ptr<View>& view) {
    return view->kind() == kind;
}

bool holdsSwitch(const View& view) {
    return std::ranges::any_of(view.subviews(),
                               [](const auto& each) { return isOf(View::Kind::Switch, each); });
}

bool holdsButtonsAlone(const View& view) {
    return !view.subviews().empty() && std::ranges::all_of(view.subviews(), [](const auto& each) {
        return isOf(View::Kind::Button, each);
    });
}

bool scrolls(const View& view) {
    for (const View* each = &view; each; each = each->superview())
        if (each->kind() == View::Kind::Scroll)
            return true;
    return false;
}

std::string ofContainer(const View& view) {
    if (view.kind() == View::Kind::Scroll)
        return "view scroll";
    if (view.border().width > 0)
        return "view box";
    if (holdsSwitch(view))
        return "view row";
    if (holdsButtonsAlone(view))
        return scrolls(view) ? "view feet" : "view bar";
    return "view";
}

std::string ofButton(const Button& button) {
    std::string classes = "button";
    if (button.leavesApplication())
        classes += " leaves";
    if (button.backgroundColor())
        classes += " filled";
    const View* container = button.superview();
    if (container && !scrolls(*container))
        classes += holdsButtonsAlone(*container) ? " answer" : " onward";
    return classes;
}

// Bold texts look like the screens' titles.
std::string ofLabel(const Label& label, const Element& element) {
    if (label.font() && label.font()->name.ends_with("-Bold") && !label.text().empty())
        return label.count() ? "label heading counted" : "label heading";
    return element.describes ? "label describes" : "label";
}

} // namespace

std::string classesOf(const View& view, const Element& element) {
    return visit(view, Overloaded{[&](const Label& label) { return ofLabel(label, element); },
                                  [](const Button& button) { return ofButton(button); },
                                  [](const Switch& control) -> std::string {
                                      return control.scale() < 1 ? "switch" : "switch whole";
                                  },
                                  [](const View& container) { return ofContainer(container); }});
}

} // namespace vx::web
