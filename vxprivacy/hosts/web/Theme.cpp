#include "vxprivacy/hosts/web/Theme.h"

#include <optional>

#include "vxprivacy/hosts/web/CSS.h"
#include "vxprivacy/platform/ui/GridPlanner.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::web {

namespace {

// The first that the tree has of each.
struct Found {
    std::optional<Colour> text;
    std::optional<Colour> ground;
    std::optional<Colour> line;
    std::optional<Colour> accent;

    bool isComplete() const { return text && ground && line && accent; }
};

void keepFirst(std::optional<Colour>& found, const std::optional<Colour>& colour) {
    if (!found)
        found = colour;
}

void collect(const View& view, Found& found) {
    if (found.isComplete())
        return;
    keepFirst(found.line, view.border().colour);
    visit(view,
          Overloaded{[&](const Label& label) { keepFirst(found.text, label.textColor()); },
                     [&](const Switch& control) { keepFirst(found.accent, control.onTintColor()); },
                     [&](const Button& button) {
                         if (button.enabled())
                             keepFirst(found.accent, button.backgroundColor());
                     },
                     [&](const View&) { keepFirst(found.ground, view.backgroundColor()); }});
    for (const auto& subview : view.subviews())
        collect(*subview, found);
}

void addToken(std::string& text, std::string_view name, const std::optional<Colour>& value) {
    if (value)
        declare(text, name, colour(*value));
}

bool hasColour(const View& view) {
    const auto& background = view.backgroundColor();
    const auto* label = viewAs<Label>(view);
    return (background && (!view.superview() || *background != kWhite)) ||
           (label && label->textColor());
}

// What the screen leaves to a status bar, if anything.
double keptAtTop(const View& root) {
    const GridPlan plan = gridPlan(root, root.width());
    return plan.items.empty() ? 0 : plan.items.front().row.before;
}

} // namespace

Colours coloursOf(const View& root) {
    if (hasColour(root))
        return Colours::Own;
    for (const auto& subview : root.subviews())
        if (coloursOf(*subview) == Colours::Own)
            return Colours::Own;
    return Colours::Platform;
}

std::string frame(const View& root) {
    std::string text;
    declare(text, "--kept", points(keptAtTop(root)));
    if (coloursOf(root) == Colours::Platform)
        return text;
    Found found;
    collect(root, found);
    addToken(text, "--text", found.text);
    addToken(text, "--raised", found.ground);
    addToken(text, "--hairline", found.line);
    addToken(text, "--accent", found.accent);
    return text;
}

} // namespace vx::web
