#include "vxprivacy/hosts/web/Painter.h"

#include <string_view>
#include <utility>

#include "vxprivacy/hosts/web/Classes.h"
#include "vxprivacy/platform/ui/GridPlanner.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::web {

namespace {

bool isContainer(const View& view) {
    return view.kind() == View::Kind::View || view.kind() == View::Kind::Scroll;
}

bool isText(const View& view) {
    const auto* label = viewAs<Label>(view);
    return label && !label->text().empty();
}

bool beginsInRowOf(const GridPlan::Item& label, const GridPlan::Item& control) {
    return label.row.first <= control.row.first && control.row.first < label.row.last;
}

} // namespace

void Painter::beginScreen(const View& root) {
    colours_ = coloursOf(root);
    screenWidth_ = root.width();
}

std::string Painter::whole(View& view) {
    deep_ = true;
    paint(view);
    return markup_.take();
}

std::string Painter::own(View& view) {
    deep_ = false;
    paint(view);
    return markup_.take();
}

void Painter::paint(View& view) {
    if (isContainer(view))
        return paintContainer(view);
    const Element& element = elements_.of(view);
    visit(view, Overloaded{[&](Label& label) { paintLabel(label, element); },
                           [&](Button& button) { paintButton(button, element); },
                           [&](Switch& control) { paintSwitch(control, element); },
                           [](View&) {}}); // a container, painted above
}

void Painter::begin(std::string_view tag, const View& view, const Element& element) {
    const std::string declarations = element.placement + element.grid + look(view, colours_);
    std::string classes = classesOf(view, element);
    if (!declarations.empty())
        classes.append(" ").append(styles_.className(declarations));
    markup_.open(tag).attribute("id", element.id).attribute("class", classes);
    if (view.takesTaps())
        markup_.flag("data-tap").attribute("role", "button").attribute("tabindex", "0");
}

void Painter::paintLabel(const Label& label, const Element& element) {
    const std::string_view tag = looksLikeHeading(label) ? "h2" : "p";
    begin(tag, label, element);
    markup_.close().text(label.text()).end(tag);
}

void Painter::paintButton(const Button& button, const Element& element) {
    const bool leaves = button.leavesApplication();
    begin("button", button, element);
    markup_.attribute("type", "button");
    if (leaves)
        markup_.attribute("role", "link");
    if (!button.enabled())
        markup_.flag("disabled");
    markup_.close().text(button.title());
    if (leaves) // the arrow that eyes see is the style sheet's
        markup_.open("span")
            .attribute("class", "unseen")
            .close()
            .text(" (" + texts_.leaves + ")")
            .end("span");
    markup_.end("button");
}

void Painter::paintSwitch(const Switch& control, const Element& element) {
    begin("input", control, element);
    markup_.attribute("type", "checkbox").attribute("role", "switch");
    markup_.attribute("autocomplete", "off"); // or a browser restores what the user left
    if (!element.title.empty())
        markup_.attribute("aria-labelledby", element.title);
    if (!element.description.empty())
        markup_.attribute("aria-describedby", element.description);
    if (control.on())
        markup_.flag("checked");
    markup_.close();
}

void Painter::paintContainer(View& view) {
    if (!deep_) {
        begin("div", view, elements_.of(view));
        markup_.close().end("div");
        return;
    }
    const GridPlan plan = gridPlan(view, screenWidth_);
    arrange(view, plan);
    begin("div", view, elements_.of(view));
    markup_.close();
    for (const auto& item : plan.items)
        paint(*item.view);
    markup_.end("div");
}

// Puts down what the subviews' elements have from their container.
void Painter::arrange(View& container, const GridPlan& plan) {
    Element& own = elements_.of(container);
    own.grid = grid(plan);
    const auto places = placements(plan, own.height);
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        Element& element = elements_.of(*plan.items[i].view);
        element.placement = places[i];
        element.height = heightOf(plan, i);
        element.following.reset();
        if (i + 1 < plan.items.size() && isText(*plan.items[i + 1].view))
            element.following = plan.items[i + 1].view->weak_from_this();
    }
    for (const auto& item : plan.items)
        if (item.view->kind() == View::Kind::Switch)
            describeSwitch(elements_.of(*item.view), plan, item, own);
}

// A switch is called what the label beside it says, and is described by the text under them, which
// may stand under the container that holds the two.
void Painter::describeSwitch(Element& element, const GridPlan& plan, const GridPlan::Item& item,
                             const Element& container) {
    element.title.clear();
    element.description.clear();
    for (const auto& other : plan.items)
        if (isText(*other.view) && element.description.empty()) {
            if (element.title.empty() && beginsInRowOf(other, item))
                element.title = elements_.of(*other.view).id;
            else if (other.row.first > item.row.first)
                describe(element, *other.view);
        }
    if (const auto following = container.following.lock(); element.description.empty() && following)
        describe(element, *following);
    if (element.title.empty())
        element.title = std::exchange(element.description, "");
}

void Painter::describe(Element& control, View& label) {
    Element& description = elements_.of(label);
    description.describes = true;
    control.description = description.id;
}

} // namespace vx::web
