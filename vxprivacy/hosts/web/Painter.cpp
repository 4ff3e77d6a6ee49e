#include "vxprivacy/hosts/web/Painter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "vxprivacy/hosts/web/Classes.h"
#include "vxprivacy/hosts/web/Groups.h"
#include "vxprivacy/hosts/web/Names.h"
#include "vxprivacy/platform/foundation/CodePoints.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/ui/ControlNames.h"
#include "vxprivacy/platform/ui/GridPlanner.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::web {

namespace {

// Of fewer a browser lays out all, so that their scroll bar is exact.
constexpr std::size_t kManyItems = 60;

bool isContainer(const View& view) {
    return view.kind() == View::Kind::View || view.kind() == View::Kind::Scroll;
}

bool isText(const View& view) {
    const auto* label = viewAs<Label>(view);
    return label && !label->text().empty();
}

std::string_view tagOf(const Label& label) {
    constexpr std::array<std::string_view, 4> tags = {"p", "h1", "h2", "h3"};
    const auto level = static_cast<std::size_t>(std::clamp(label.headingLevel(), 0, 3));
    return tags[label.text().empty() ? 0 : level];
}

bool isOperable(const View& view) {
    const auto* label = viewAs<Label>(view);
    return view.kind() == View::Kind::Switch || view.kind() == View::Kind::Button ||
           (label ? label->link().has_value() : view.takesTaps()) ||
           std::ranges::any_of(view.subviews(),
                               [](const auto& subview) { return isOperable(*subview); });
}

std::string titleOf(const View& view) {
    const Row* row = rowOf(view);
    const auto title = row ? row->title.lock() : nullptr;
    return title ? title->text() : "";
}

// The text of a label before, in and after its link, which may lie outside the text in part.
struct LinkedText {
    std::string_view before, link, after;
};

LinkedText linkedText(const Label& label) {
    const std::string_view text = label.text();
    const auto& [first, count] = label.link()->range;
    const std::size_t start = byteOffset(text, first);
    const std::size_t length = byteOffset(text.substr(start), count);
    return {text.substr(0, start), text.substr(start, length), text.substr(start + length)};
}

} // namespace

void Painter::beginScreen(const View& root) {
    colours_ = coloursOf(root);
    screenWidth_ = root.width();
}

std::string Painter::whole(View& view) {
    deep_ = true;
    paint(view, elements_.of(view));
    return markup_.take();
}

std::string Painter::own(View& view) {
    deep_ = false;
    paint(view, elements_.of(view));
    return markup_.take();
}

void Painter::paint(View& view, Element& element) {
    if (isContainer(view))
        return paintContainer(view, element);
    visit(view, Overloaded{[&](Label& label) { paintLabel(label, element); },
                           [&](Button& button) { paintButton(button, element); },
                           [&](Switch& control) { paintSwitch(control, element); },
                           [](View&) {}}); // a container, painted above
}

void Painter::begin(std::string_view tag, const View& view, const Element& element) {
    std::string declarations = look(view, colours_);
    declarations.insert(0, element.grid).insert(0, element.placement);
    std::string classes = classesOf(view, element);
    if (!declarations.empty())
        classes.append(" ").append(styles_.className(declarations));
    markup_.open(tag).attribute("id", element.id()).attribute("class", classes);
    const auto* label = viewAs<Label>(view);
    if (!view.takesTaps() || (label && label->link())) // which takes them
        return;
    markup_.flag("data-tap");
    if (!label) // a text without a link promises nothing
        markup_.attribute("role", "button").attribute("tabindex", "0");
}

void Painter::paintLabel(const Label& label, const Element& element) {
    const std::string_view tag = tagOf(label);
    begin(tag, label, element);
    if (element.isListItem && label.headingLevel() == 0)
        markup_.attribute("role", "listitem");
    markup_.close();
    const auto& count = label.count();
    if (count) {
        markup_.open("span").attribute("class", "count").attribute("id", countId(element.id()));
        markup_.attribute("aria-hidden", "true").close().text(textOf(*count)).end("span");
        markup_.open("span").attribute("class", "title").close();
    }
    label.link() ? paintLinkedText(label) : void(markup_.text(label.text()));
    if (count)
        markup_.end("span");
    markup_.end(tag);
}

// Only the link takes taps; the page says at which character.
void Painter::paintLinkedText(const Label& label) {
    const auto& link = *label.link();
    const auto [before, words, after] = linkedText(label);
    if (words.empty())
        return void(markup_.text(before));
    const std::string declarations = look(link);
    markup_.text(before).open("a").attribute("role", "link").attribute("tabindex", "0");
    if (!declarations.empty())
        markup_.attribute("class", styles_.className(declarations));
    markup_.attribute("data-character", std::to_string(link.range.start)).close();
    markup_.text(words).end("a").text(after);
}

std::string Painter::textOf(const Label::Count& count) const {
    return formatted(texts_.countOn, {std::to_string(count.on), std::to_string(count.all)});
}

void Painter::paintButton(const Button& button, Element& element) {
    const bool leaves = button.leavesApplication();
    element.disabled = !button.enabled();
    begin("button", button, element);
    markup_.attribute("type", "button");
    if (button.leadsBack())
        markup_.flag("data-back");
    if (leaves)
        markup_.attribute("role", "link");
    if (!button.enabled()) // it can have the focus, so that one hears why
        markup_.attribute("aria-disabled", "true").attribute("aria-describedby", kNotYet);
    if (element.title != 0) // its own text says what it does, the row's title for what
        markup_.attribute("aria-labelledby", element.id() + " " + idOf(element.title));
    if (button.expanded())
        markup_.attribute("aria-expanded", *button.expanded() ? "true" : "false");
    if (const auto panel = button.panel())
        markup_.attribute("aria-controls", elements_.of(*panel).id());
    markup_.close();
    leaves ? paintAddress(button.title()) : void(markup_.text(button.title()));
    if (leaves) // the arrow that eyes see is the style sheet's
        markup_.open("span")
            .attribute("class", "unseen")
            .close()
            .text(" (" + texts_.leaves + ")")
            .end("span");
    markup_.end("button");
}

// One that has to break does so after a slash.
void Painter::paintAddress(std::string_view text) {
    for (auto end = text.find('/'); end != text.npos; end = text.find('/')) {
        markup_.text(text.substr(0, end + 1)).open("wbr").close();
        text.remove_prefix(end + 1);
    }
    markup_.text(text);
}

void Painter::paintSwitch(const Switch& control, const Element& element) {
    begin("input", control, element);
    markup_.attribute("type", "checkbox").attribute("role", "switch");
    markup_.attribute("autocomplete", "off"); // or a browser restores what the user left
    markup_.attribute("aria-labelledby", namesOf(element));
    if (element.title != 0 && element.text != 0)
        markup_.attribute("aria-label", titleOf(control) + ":");
    if (const std::string ids = descriptionsOf(element); !ids.empty())
        markup_.attribute("aria-describedby", ids);
    if (control.on())
        markup_.flag("checked");
    markup_.close();
}

void Painter::paintContainer(View& view, Element& element) {
    std::optional<GridPlan> plan;
    if (deep_) {
        plan = gridPlan(view, screenWidth_);
        element.grid = styles_.keep(grid(*plan));
        for (const auto& item : plan->items) // numbered in their order, whichever names which
            elements_.of(*item.view);
        nameControls(elements_, view, *plan);
    }
    begin("div", view, element);
    if (element.isListItem)
        markup_.attribute("role", "listitem");
    if (view.kind() == View::Kind::Scroll && !isOperable(view)) // or no key reaches it
        markup_.attribute("tabindex", "0")
            .attribute("role", "group")
            .attribute("aria-labelledby", kPageTitle);
    markup_.close();
    if (plan)
        paintItems(*plan, element);
    markup_.end("div");
}

// Rows are wrapped where one stands below the other.
void Painter::paintItems(const GridPlan& plan, const Element& container) {
    const bool stack = isStack(plan);
    Groups groups(markup_, elements_, stack ? styles_.className(std::string(container.grid)) : "",
                  plan.items.size() > kManyItems ? Groups::Length::Long : Groups::Length::Short);
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        View& view = *plan.items[i].view;
        Element& element = elements_.of(view);
        place(element, plan, i, stack, container.height);
        if (stack)
            groups.moveTo(view, element.isListItem);
        paint(view, element);
    }
    groups.moveOut();
}

// Puts down what the element of an item has from its container.
void Painter::place(Element& element, const GridPlan& plan, std::size_t index, bool stack,
                    const Height& height) {
    element.placement = styles_.keep(placement(plan, plan.items[index], stack, height));
    element.height = heightOf(plan, index);
    element.isListItem = stack && isItemAlone(plan, index);
    element.following = 0;
    if (index + 1 < plan.items.size() && isText(*plan.items[index + 1].view))
        element.following = elements_.of(*plan.items[index + 1].view).number;
}

} // namespace vx::web
