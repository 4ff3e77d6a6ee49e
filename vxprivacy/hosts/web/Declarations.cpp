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

// Of a list of declarations, so that most need memory once.
constexpr std::size_t kUsualLength = 160;

// Switches and links take taps 44 points high, and are laid out as high as a phone draws them: what
// they reach over, by kind. Less under a link, for the switch that may follow it.
struct Overlap {
    double above = 0;
    double below = 0;
};
constexpr double kSwitchHeight = 31;
constexpr Overlap kSwitchOverlap = {6.5, 6.5};
constexpr Overlap kLinkOverlap = {5, 1.5};

void addLength(std::string& text, std::string_view property,
               const std::optional<GridPlan::Length>& length) {
    if (length && length->share)
        declare(text, property, "calc(", number(length->value), "*var(--column))");
    else if (length)
        declare(text, property, points(length->value));
}

void addText(std::string& text, const std::optional<Font>& font,
             const std::optional<Colour>& textColour) {
    if (textColour && *textColour != kInk)
        declare(text, "color", colour(*textColour));
    if (!font)
        return;
    declare(text, "font-size", number(font->size / 16), "rem");
    if (font->name.starts_with("TrebuchetMS"))
        declare(text, "font-family", "var(--trebuchet)");
    if (font->name.ends_with("-Bold"))
        declare(text, "font-weight", "700");
}

// A title that is to stay on one line has its letters shrink, as far as they may, before it wraps.
// Those of an address are 0.6 as wide as they are high; what stands around it takes 64 points.
void addShrinking(std::string& text, const Button& button) {
    if (button.numberOfLines() != 1 || button.minimumScaleFactor() >= 1)
        return;
    const double size = button.font() ? button.font()->size / 16 : 1.125; // rem
    const double letters = 0.6 * static_cast<double>(button.title().size() + 2);
    declare(text, "font-size", "clamp(", number(size * button.minimumScaleFactor()),
            "rem,calc((var(--column) - 64px)/", number(letters), "),", number(size), "rem)");
}

// The look draws the line over the view, whose layout it leaves alone.
void addBorder(std::string& text, const View::Border& border) {
    declare(text, "--line", points(border.width), " solid ",
            border.colour ? colour(*border.colour) : "var(--hairline)");
    declare(text, "border-radius", points(border.cornerRadius));
}

void addWhatIsOfItsKind(std::string& text, const View& view) {
    visit(view, Overloaded{[&](const Label& label) {
                               addText(text, label.font(), label.textColor());
                               if (label.alignment() == Label::Alignment::Justified)
                                   text += "text-align:justify;text-wrap:wrap;";
                           },
                           [&](const Button& button) {
                               addText(text, button.font(), button.titleColor());
                               addShrinking(text, button);
                           },
                           [&](const Switch& control) {
                               if (const auto& tint = control.onTintColor())
                                   declare(text, "--on", colour(*tint));
                           },
                           [](const View&) {}});
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

void addMargins(std::string& text, std::string_view property, double before, double after) {
    if (before != 0 || after != 0)
        declare(text, property, points(before), " ", points(after));
}

// Lines are counted from 1; the gap before each column is a track of its own.
void addLines(std::string& text, const GridPlan::Item& item, bool stack) {
    const auto& [view, column, row, asHighAs] = item;
    declare(text, "grid-column", std::to_string(2 * column.first + 2), "/",
            std::to_string(2 * column.last + 1));
    if (!stack)
        declare(text, "grid-row", std::to_string(row.first + 1), "/", std::to_string(row.last + 1));
    declare(text, "place-self", keyword(row.alignment), " ", keyword(column.alignment));
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

void addSizes(std::string& text, const GridPlan::Item& item, const Height& height) {
    const auto& [view, column, row, asHighAs] = item;
    const Overlap overlap = overlapOf(*view);
    addMargins(text, "margin-block", row.before - overlap.above,
               row.after - overlap.below - overhang(item, height));
    addMargins(text, "margin-inline", column.before, column.after);
    addLength(text, "width", column.size.exact);
    addLength(text, "min-width", column.size.least);
    addLength(text, "max-width", column.size.most);
    addLength(text, "min-height", row.size.exact ? row.size.exact : row.size.least);
}

} // namespace

std::string look(const View& view, Colours colours) {
    std::string text;
    text.reserve(kUsualLength);
    const auto& background = view.backgroundColor();
    if (background && (colours == Colours::Own || *background != kWhite))
        declare(text, "background-color", colour(*background));
    if (view.border() != View::Border())
        addBorder(text, view.border());
    if (view.scale() != 1)
        declare(text, "--scale", number(view.scale()));
    addWhatIsOfItsKind(text, view);
    return text;
}

std::string look(const Label::Link& link) {
    std::string text;
    if (link.colour != kInk)
        declare(text, "color", colour(link.colour));
    if (!link.underlined)
        declare(text, "text-decoration", "none");
    return text;
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
        columns.append(points(column.gap)).append(column.fills ? " minmax(0,1fr) " : " auto ");
    std::string text;
    declare(text, "grid-template-columns", columns, points(plan.gapAfterColumns));
    if (std::ranges::find(plan.rowFills, true) == plan.rowFills.end())
        return text;
    std::string rows;
    for (bool fills : plan.rowFills)
        rows += fills ? " minmax(0,1fr)" : " auto";
    declare(text, "grid-template-rows", std::string_view(rows).substr(1));
    return text;
}

std::string placement(const GridPlan& plan, const GridPlan::Item& item, bool stack,
                      const Height& height) {
    std::string text;
    text.reserve(kUsualLength);
    addLines(text, item, stack);
    addSizes(text, item, plan.rowFills.size() == 1 ? height : Height());
    return text;
}

Height heightOf(const GridPlan& plan, std::size_t index) {
    const GridPlan::Item& item = plan.items[index];
    Height height{item.asHighAs, item.row.after};
    if (index + 1 < plan.items.size() && plan.items[index + 1].row.first >= item.row.last)
        height.room += plan.items[index + 1].row.before;
    return height;
}

} // namespace vx::web
