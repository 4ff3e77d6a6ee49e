// The grid plan of a container: sorts its constraints by axis, has each axis arranged, joins the
// two and shares out gaps and room. docs/layout.md has the rules.

#include "vxprivacy/platform/ui/GridPlanner.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <utility>

#include "vxprivacy/platform/ui/GridAxis.h"

namespace vx {

namespace {

using Attribute = LayoutConstraint::Attribute;
using Alignment = GridPlan::Alignment;
using Place = GridPlan::Place;

bool isVertical(Attribute attribute) {
    return attribute == Attribute::Top || attribute == Attribute::Bottom ||
           attribute == Attribute::Height || attribute == Attribute::CentreY;
}

bool isStart(Attribute attribute) {
    return attribute == Attribute::Leading || attribute == Attribute::Top;
}

bool isEnd(Attribute attribute) {
    return attribute == Attribute::Trailing || attribute == Attribute::Bottom;
}

bool isSize(Attribute attribute) {
    return attribute == Attribute::Width || attribute == Attribute::Height;
}

double length(double points) {
    return std::isfinite(points) && points > 0 ? points : 0;
}

// Sorts the constraints into the rules of the two axes; what concerns no child is left out.
class Rules {
public:
    Rules(const View& container, double screenWidth)
        : container_(container), screenWidth_(screenWidth) {
        const auto& children = container.subviews();
        for (std::size_t i = 0; i < children.size(); ++i)
            numbers_.emplace_back(children[i].get(), i);
        std::ranges::sort(numbers_);
        horizontal.children.resize(children.size());
        vertical.children.resize(children.size());
        asHighAs.resize(children.size());
        for (const LayoutConstraint& constraint : container.constraints())
            take(constraint);
    }

    GridAxis horizontal;
    GridAxis vertical;
    /// Of each child, the view in it that gives its height, or null.
    std::vector<const View*> asHighAs;

private:
    using Child = std::optional<std::size_t>;

    // Asks no view what it is in: of thousands none is in the processor's cache any more.
    Child numberOf(const View* view) const {
        if (!view || view == &container_)
            return {};
        const auto found = std::ranges::lower_bound(numbers_, view, {},
                                                    [](const auto& each) { return each.first; });
        return found != numbers_.end() && found->first == view ? Child(found->second) : Child();
    }

    void take(const LayoutConstraint& constraint) {
        const View* first = constraint.firstItem;
        const View* second = constraint.secondItem;
        GridAxis& axis = isVertical(constraint.firstAttribute) ? vertical : horizontal;
        const Child child = numberOf(first);
        const Child other = numberOf(second);
        if (isSize(constraint.firstAttribute) && child)
            takeSize(axis, *child, constraint, second, other);
        else if (isEnd(constraint.firstAttribute) && first == &container_ && other)
            take(axis.children[*other].end, length(constraint.constant));
        else if (isStart(constraint.firstAttribute) && child && second == &container_)
            take(axis.children[*child].start, length(constraint.constant));
        else if (isStart(constraint.firstAttribute) && child && other)
            axis.links.push_back({*other, *child, length(constraint.constant)});
        else if (child && (other || second == &container_))
            takeCentre(axis, *child, other);
    }

    // Of rules that say the same thing twice, the first holds.
    template <class T>
    static void take(std::optional<T>& rule, const T& value) {
        if (!rule)
            rule = value;
    }

    void takeSize(GridAxis& axis, std::size_t child, const LayoutConstraint& constraint,
                  const View* second, Child other) {
        GridAxis::Child& rules = axis.children[child];
        const bool equal = constraint.relation == LayoutConstraint::Relation::Equal;
        if (constraint.secondAttribute == Attribute::None)
            takeLength(rules.size, constraint);
        else if (equal && other)
            rules.equalSize = axis.children[*other].equalSize = true;
        else if (equal && second == &container_)
            rules.asLargeAsContainer = true;
        else if (equal && second && second->superview() == constraint.firstItem &&
                 constraint.firstAttribute == Attribute::Height && !asHighAs[child])
            asHighAs[child] = second;
    }

    // A metric was computed from the screen's width, and stays a share of it.
    void takeLength(GridPlan::Size& size, const LayoutConstraint& constraint) const {
        const bool share = constraint.metric && constraint.firstAttribute == Attribute::Width;
        if (share && screenWidth_ <= 0)
            return;
        const double unit = share ? screenWidth_ : 1;
        const GridPlan::Length given{length(constraint.constant / unit), share};
        switch (constraint.relation) {
        case LayoutConstraint::Relation::Equal:
            return take(size.exact, given);
        case LayoutConstraint::Relation::GreaterThanOrEqual:
            return take(size.least, given);
        case LayoutConstraint::Relation::LessThanOrEqual:
            return take(size.most, given);
        }
    }

    static void takeCentre(GridAxis& axis, std::size_t child, Child other) {
        axis.children[child].centred = true;
        if (!other)
            return;
        axis.children[*other].centred = true;
        take(axis.children[child].centredOn, *other);
    }

    const View& container_;
    const double screenWidth_;
    std::vector<std::pair<const View*, std::size_t>> numbers_; // by address
};

// Who is held to the container's start alone, and may be as long as to reach its end, keeps the
// same gap there.
void keepGaps(GridAxis::Result& columns, const GridAxis& rules) {
    for (std::size_t i = 0; i < columns.places.size(); ++i) {
        const GridAxis::Child& child = rules.children[i];
        Place& place = columns.places[i];
        if (columns.loose[i] || child.asLargeAsContainer || child.size.exact)
            continue;
        if (child.start && !child.end && place.last == columns.tracks)
            place.after = *child.start;
    }
}

// What no rule puts into a row comes after the rest, unless no child has one.
void placeLooseRows(GridAxis::Result& rows) {
    if (std::ranges::all_of(rows.loose, [](bool loose) { return loose; }))
        return;
    for (std::size_t i = 0; i < rows.places.size(); ++i)
        if (rows.loose[i]) {
            rows.places[i].first = rows.tracks++;
            rows.places[i].last = rows.tracks;
        }
}

// Goes through the rows from the top, knowing which columns are taken.
bool anyShareASpot(const std::vector<GridPlan::Item>& items) {
    std::vector<const GridPlan::Item*> beginning;
    beginning.reserve(items.size());
    for (const auto& item : items)
        beginning.push_back(&item);
    const auto first = [](const auto* item) { return item->row.first; };
    if (!std::ranges::is_sorted(beginning, {}, first)) // most are, and the sort takes long
        std::ranges::sort(beginning, {}, first);
    const auto reachesInto = [](const auto* item, const auto* next) {
        return next->row.first < item->row.last;
    };
    if (std::ranges::adjacent_find(beginning, reachesInto) == beginning.end())
        return false; // each has rows of its own
    auto ending = beginning;
    std::ranges::sort(ending, {}, [](const auto* item) { return item->row.last; });
    std::map<std::size_t, std::size_t> taken; // first column to one past the last
    auto ended = ending.begin();
    for (const auto* item : beginning) {
        for (; (*ended)->row.last <= item->row.first; ++ended)
            taken.erase((*ended)->column.first);
        const auto next = taken.lower_bound(item->column.last);
        if (next != taken.begin() && std::prev(next)->second > item->column.first)
            return true;
        taken.emplace(item->column.first, item->column.last);
    }
    return false;
}

// A row for each, in the order of the subviews; margins and widths stay.
void stack(GridPlan& plan) {
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        plan.items[i].column.first = 0;
        plan.items[i].column.last = 1;
        plan.items[i].row.first = i;
        plan.items[i].row.last = i + 1;
    }
}

bool isControl(const View& view) {
    return view.kind() == View::Kind::Switch || view.kind() == View::Kind::Button;
}

// Text and boxes take the room there is, controls what they need.
void fillColumns(GridPlan& plan, const GridAxis& rules, std::size_t tail) {
    auto& columns = plan.columns;
    for (auto& column : columns)
        column.fills = false;
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        const auto& [view, column, row, asHighAs] = plan.items[i];
        const bool fills = rules.children[i].equalSize || (!column.size.exact && !isControl(*view));
        if (column.last == column.first + 1 && fills)
            columns[column.first].fills = true;
    }
    if (std::ranges::none_of(columns, &GridPlan::Column::fills))
        columns[(tail < columns.size() ? columns.size() - tail : columns.size()) - 1].fills = true;
}

// The gap that all have who begin at a line goes to the line, so that equal columns are equal.
void shareGaps(GridPlan& plan) {
    std::vector<std::optional<double>> gaps(plan.columns.size());
    std::optional<double> last;
    const auto atMost = [](std::optional<double>& gap, double margin) {
        gap = std::min(gap.value_or(margin), margin);
    };
    for (const auto& item : plan.items) {
        atMost(gaps[item.column.first], item.column.before);
        if (item.column.last == plan.columns.size())
            atMost(last, item.column.after);
    }
    for (std::size_t i = 0; i < gaps.size(); ++i)
        plan.columns[i].gap = gaps[i].value_or(0);
    plan.gapAfterColumns = last.value_or(0);
    for (auto& item : plan.items) {
        item.column.before -= plan.columns[item.column.first].gap;
        if (item.column.last == plan.columns.size())
            item.column.after -= plan.gapAfterColumns;
    }
}

void fillRows(GridPlan& plan, const GridAxis& rules, std::size_t rows) {
    plan.rowFills.assign(rows, false);
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        const auto& [view, column, row, asHighAs] = plan.items[i];
        const bool fills =
            view->kind() == View::Kind::Scroll || rules.children[i].asLargeAsContainer;
        if (row.last == row.first + 1 && fills)
            plan.rowFills[row.first] = true;
    }
}

GridAxis::Result unarranged(std::size_t children) {
    return {std::vector<Place>(children), std::vector<bool>(children, true)};
}

} // namespace

GridPlan gridPlan(const View& container, double screenWidth) {
    const Rules rules(container, screenWidth);
    const auto& children = container.subviews();
    auto columns = rules.horizontal.arrange();
    auto rows = rules.vertical.arrange();
    const bool circle = !columns || !rows;
    if (!columns)
        columns = unarranged(children.size());
    if (!rows)
        rows = unarranged(children.size());
    keepGaps(*columns, rules.horizontal);
    placeLooseRows(*rows);

    GridPlan plan;
    plan.scrolls = container.kind() == View::Kind::Scroll;
    plan.items.reserve(children.size());
    for (std::size_t i = 0; i < children.size(); ++i) {
        plan.items.push_back(
            {children[i].get(), columns->places[i], rows->places[i], rules.asHighAs[i]});
        if (columns->loose[i] && plan.scrolls)
            plan.items[i].column.alignment = Alignment::Stretch;
    }
    if (circle || anyShareASpot(plan.items)) {
        stack(plan);
        *columns = {{}, {}, 1, 0};
        rows->tracks = children.size();
    }
    plan.columns.resize(columns->tracks);
    fillColumns(plan, rules.horizontal, columns->tail);
    shareGaps(plan);
    fillRows(plan, rules.vertical, rows->tracks);
    const auto spot = [](const GridPlan::Item& item) {
        return std::pair(item.row.first, item.column.first);
    };
    if (!std::ranges::is_sorted(plan.items, {}, spot)) // most are, and the sort takes memory
        std::ranges::stable_sort(plan.items, {}, spot);
    return plan;
}

} // namespace vx
