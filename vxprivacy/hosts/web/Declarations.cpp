#include "vxprivacy/hosts/web/Declarations.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "vxprivacy/hosts/web/CSS.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::web {

namespace {

// The blue of links and titles is the style sheet's own, --ink: lifted where the page is dark.
constexpr Colour kInk = {0.05, 0.4, 0.65, 1};

// Switches and links take taps 44 points high, and are laid out as high as a phone draws them: what
// they reach over, by kind. Less under a link, for the switch that may follow it.
struct Overlap {
    double above = 0;
    double below = 0;
};
constexpr double kSwitchHeight = 31;
constexpr Overlap kSwitchOverlap = {6.5, 6.5};
constexpr Overlap kLinkOverlap = {5, 1.5};

std::string length(const GridPlan::Length& length) {
    return length.share ? "calc(" + number(length.value) + "*var(--column))" : points(length.value);
}

std::string text(const std::optional<Font>& font, const std::optional<Colour>& textColour) {
    std::string text;
    if (textColour && *textColour != kInk)
        text += declaration("color", colour(*textColour));
    if (font) {
        text += declaration("font-size", number(font->size / 16) + "rem");
        if (font->name.starts_with("TrebuchetMS"))
            text += declaration("font-family", "var(--trebuchet)");
        if (font->name.ends_with("-Bold"))
            text += declaration("font-weight", "700");
    }
    return text;
}

// The look draws the line over the view, whose layout it leaves alone.
std::string border(const View::Border& border) {
    return declaration("--line", points(border.width) + " solid " +
                                     (border.colour ? colour(*border.colour) : "var(--hairline)")) +
           declaration("border-radius", points(border.cornerRadius));
}

std::string ofKind(const View& view) {
    return visit(
        view,
        Overloaded{[](const Label& label) {
                       const bool justified = label.alignment() == Label::Alignment::Justified;
                       return text(label.font(), label.textColor()) +
                              (justified ? "text-align:justify;" : "");
                   },
                   [](const Button& button) { return text(button.font(), button.titleColor()); },
                   [](const Switch& control) {
                       const auto& tint = control.onTintColor();
                       return tint ? declaration("--on", colour(*tint)) : std::string();
                   },
                   [](const View&) { return std::string(); }});
}

std::string_view keyword(GridPlan::Alignment alignment) {
    switch (alignment) {
    case GridPlan::Alignment::Centre:
        return "center";
    case GridPlan::Alignment::End:
        return "end";
    case GridPlan::Alignment::Stretch:
        return "stretch";
    default:
        return "start";
    }
}

std::string margins(std::string_view axis, double before, double after) {
    if (before == 0 && after == 0)
        return "";
    return declaration("margin-" + std::string(axis), points(before) + " " + points(after));
}

std::string along(std::string_view property, const std::optional<GridPlan::Length>& value) {
    return value ? declaration(property, length(*value)) : "";
}

// Lines are counted from 1; the gap before each column is a track of its own.
std::string lines(const GridPlan::Item& item, bool stack) {
    const auto& [view, column, row, asHighAs] = item;
    std::string text = declaration("grid-column", std::to_string(2 * column.first + 2) + "/" +
                                                      std::to_string(2 * column.last + 1));
    if (!stack)
        text += declaration("grid-row",
                            std::to_string(row.first + 1) + "/" + std::to_string(row.last + 1));
    return text + declaration("place-self", std::string(keyword(row.alignment)) + " " +
                                                std::string(keyword(column.alignment)));
}

Overlap overlapOf(const View& view) {
    return visit(view, Overloaded{[](const Switch&) { return kSwitchOverlap; },
                                  [](const Button& button) {
                                      return button.leavesApplication() ? kLinkOverlap : Overlap();
                                  },
                                  [](const View&) { return Overlap(); }});
}

// How far an item hangs below a container of this height: the one that gives it by its own margin,
// a switch beside it by what is more; no further than there is room. Texts never hang, since one
// that wraps would touch what comes next.
double overhang(const GridPlan::Item& item, const Height& height) {
    if (!height.of)
        return 0;
    if (item.view == height.of)
        return std::min(item.row.before, height.room);
    if (item.view->kind() != View::Kind::Switch)
        return 0;
    const double drawn = kSwitchHeight * (1 + item.view->scale()) / 2;
    return kSwitchHeight - std::max(drawn - height.room, 0.0);
}

std::string sizes(const GridPlan::Item& item, const Height& height) {
    const auto& [view, column, row, asHighAs] = item;
    const Overlap overlap = overlapOf(*view);
    std::string text = margins("block", row.before - overlap.above,
                               row.after - overlap.below - overhang(item, height));
    text += margins("inline", column.before, column.after);
    text += along("width", column.size.exact) + along("min-width", column.size.least) +
            along("max-width", column.size.most);
    return text + along("min-height", row.size.exact ? row.size.exact : row.size.least);
}

} // namespace

std::string look(const View& view, Colours colours) {
    std::string text;
    const auto& background = view.backgroundColor();
    if (background && (colours == Colours::Own || *background != kWhite))
        text += declaration("background-color", colour(*background));
    if (view.border() != View::Border())
        text += border(view.border());
    if (view.scale() != 1)
        text += declaration("--scale", number(view.scale()));
    return text + ofKind(view);
}

std::string look(const Label::Link& link) {
    return (link.colour == kInk ? "" : declaration("color", colour(link.colour))) +
           (link.underlined ? "" : "text-decoration:none;");
}

bool isStack(const GridPlan& plan) {
    for (std::size_t i = 0; i < plan.items.size(); ++i)
        if (plan.items[i].row.first != i || plan.items[i].row.last != i + 1)
            return false;
    return plan.columns.size() == 1;
}

std::string grid(const GridPlan& plan) {
    std::string columns;
    for (const auto& column : plan.columns)
        columns += points(column.gap) + (column.fills ? " minmax(0,1fr) " : " auto ");
    std::string text = declaration("grid-template-columns", columns + points(plan.gapAfterColumns));
    if (std::ranges::find(plan.rowFills, true) == plan.rowFills.end())
        return text;
    std::string rows;
    for (bool fills : plan.rowFills)
        rows += fills ? " minmax(0,1fr)" : " auto";
    return text + declaration("grid-template-rows", rows.substr(1));
}

std::vector<std::string> placements(const GridPlan& plan, const Height& height) {
    const bool stack = isStack(plan);
    const Height used = plan.rowFills.size() == 1 ? height : Height();
    std::vector<std::string> texts;
    for (const auto& item : plan.items)
        texts.push_back(lines(item, stack) + sizes(item, used));
    return texts;
}

Height heightOf(const GridPlan& plan, std::size_t index) {
    const GridPlan::Item& item = plan.items[index];
    Height height{item.asHighAs, item.row.after};
    if (index + 1 < plan.items.size() && plan.items[index + 1].row.first >= item.row.last)
        height.room += plan.items[index + 1].row.before;
    return height;
}

} // namespace vx::web
