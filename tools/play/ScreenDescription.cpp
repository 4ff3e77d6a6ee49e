// Describes a privacy center's screen as JSON: its views, what they show, and their constraints.

#include "tools/play/ScreenDescription.h"

#include <cmath>
#include <string>
#include <string_view>
#include <unordered_map>

#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::tools::play {

namespace {

using recording::Event;

std::string_view typeOf(const View& view) {
    return visit(view, Overloaded{[](const Label&) { return "label"; },
                                  [](const Button&) { return "button"; },
                                  [](const Switch&) { return "switch"; },
                                  [](const ScrollView&) { return "scroll"; },
                                  [](const View&) { return "view"; }});
}

void describeText(Event& object, const std::string& text, const std::optional<Font>& font,
                  const std::optional<Colour>& colour) {
    if (!text.empty())
        object["text"] = text;
    if (font) {
        object["font"] = font->name;
        object["size"] = rounded(font->size);
    }
    if (colour)
        object["color"] = asArray(*colour);
}

Event describedConstraints(const View& view) {
    Event formats = Event::array();
    for (const AttachedFormat& format : view.formats())
        formats.push_back(format.options ? Event::array({format.text, format.options})
                                         : Event(format.text));
    return formats;
}

// Each part adds the keys of its subject, in the order in which the line has them.
struct Description {
    const View& view;
    Event object = {};

    void text() {
        if (const auto* label = viewAs<Label>(view))
            describeText(object, label->text(), label->font(), label->textColor());
        else if (const auto* button = viewAs<Button>(view))
            describeText(object, button->title(), button->font(), button->titleColor());
    }

    void look() {
        if (view.backgroundColor())
            object["background"] = asArray(*view.backgroundColor());
        if (const auto* control = viewAs<Switch>(view))
            state(*control);
        else if (const auto* button = viewAs<Button>(view); button && !button->enabled())
            object["enabled"] = false;
        if (view.scale() != 1)
            object["scale"] = rounded(view.scale());
        if (view.border() != View::Border())
            border(view.border());
    }

    void state(const Switch& consentSwitch) {
        if (consentSwitch.onTintColor())
            object["onTint"] = asArray(*consentSwitch.onTintColor());
        object["on"] = consentSwitch.on();
    }

    void border(const View::Border& border) {
        object["border"] = Event::array({rounded(border.width), rounded(border.cornerRadius),
                                         border.colour ? asArray(*border.colour) : Event()});
    }

    void lines() {
        if (const auto* label = viewAs<Label>(view))
            lines(*label);
        else if (const auto* button = viewAs<Button>(view); button && button->numberOfLines())
            object["lines"] = *button->numberOfLines();
    }

    void lines(const Label& label) {
        if (label.alignment() == Label::Alignment::Justified)
            object["align"] = "justified";
        if (label.numberOfLines() == 0)
            object["lines"] = 0;
        if (const auto& link = label.link())
            object["link"] = Event::array({link->range.start, link->range.length});
    }
};

using Names = std::unordered_map<const View*, std::string_view>;

void describe(Event& views, const View& view, const Names& names, int depth) {
    Description description{view, {{"depth", depth}, {"type", typeOf(view)}}};
    if (const auto name = names.find(&view); name != names.end())
        description.object["name"] = name->second;
    if (view.tag() != 0)
        description.object["tag"] = view.tag();
    description.text();
    description.look();
    description.lines();
    if (view.takesTaps())
        description.object["taps"] = true;
    if (Event formats = describedConstraints(view); !formats.empty())
        description.object["constraints"] = std::move(formats);
    views.push_back(std::move(description.object));
    for (const auto& subview : view.subviews())
        describe(views, *subview, names, depth + 1);
}

} // namespace

Event rounded(double number) {
    const double thousandths = std::round(number * 1000);
    if (std::fmod(thousandths, 1000) == 0)
        return static_cast<std::int64_t>(thousandths / 1000);
    return thousandths / 1000;
}

Event asArray(const Colour& colour) {
    return Event::array(
        {rounded(colour.red), rounded(colour.green), rounded(colour.blue), rounded(colour.alpha)});
}

Event describedViews(const View& root, const ViewsDictionary& names) {
    Names namesInForce;
    for (const auto& [name, view] : names)
        namesInForce.emplace(view.get(), name);
    Event views = Event::array();
    describe(views, root, namesInForce, 0);
    return views;
}

} // namespace vx::tools::play
