#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "vxprivacy/platform/ui/Controls.h"
#include "vxprivacy/platform/ui/GridPlanner.h"
#include "vxprivacy/platform/ui/ScrollView.h"
#include "vxprivacy/platform/ui/VisualFormat.h"
#include "vxprivacy/testing/World.h"

namespace {

using namespace vx;

constexpr double kScreenWidth = 400;

// A container to which a test adds what it needs.
struct Container {
    Container() {
        metrics.set("share", 0.15 * kScreenWidth);
        views.set("container", view);
    }

    template <class Child = Label>
    void add(const std::string& name) {
        auto child = std::make_shared<Child>();
        view->addSubview(child);
        views.set(name, child);
    }

    void attach(std::string_view format, int options = 0) {
        view->addConstraints(constraintsWithVisualFormat(format, options, metrics, views));
    }

    std::string nameOf(const View* child) const {
        for (const auto& [name, each] : views)
            if (each.get() == child)
                return name;
        return "?";
    }

    recording::World world; // hears of bad formats
    std::shared_ptr<View> view = std::make_shared<View>();
    ViewsDictionary views;
    MetricsDictionary metrics;
};

std::ostream& operator<<(std::ostream& text, const GridPlan::Place& place) {
    text << place.first
         << (place.last > place.first + 1 ? "-" + std::to_string(place.last - 1) : "")
         << "SCE="[static_cast<std::size_t>(place.alignment)];
    if (place.before != 0 || place.after != 0)
        text << place.before << '/' << place.after;
    if (place.size.exact)
        text << '[' << place.size.exact->value << (place.size.exact->share ? "*]" : "]");
    return text;
}

// "8 * 8 . 0 | a(row column) ...": gaps and columns, * for one that fills; S, C, E and = for the
// alignment, then the margins and an exact size.
std::string described(const Container& container) {
    const GridPlan plan = gridPlan(*container.view, kScreenWidth);
    std::ostringstream text;
    for (const auto& column : plan.columns)
        text << column.gap << (column.fills ? " * " : " . ");
    text << plan.gapAfterColumns << " |";
    for (const auto& [view, column, row, asHighAs] : plan.items)
        text << ' ' << container.nameOf(view) << '(' << row << ' ' << column << ')';
    return text.str();
}

TEST(GridPlan, PutsWhatTheRulesSayIntoRowsAndColumns) {
    struct Case {
        std::string children;
        std::vector<std::string> formats;
        std::string plan;
    };
    const std::vector<Case> cases = {
        // A chain from top to bottom, pinned to both sides or to one: then the other side keeps
        // the gap, should the content be as long.
        {"ab",
         {"V:|-[a]-[b]-10-|", "H:|-10-[a(<=container)]-10-|", "H:|-20-[b]"},
         "10 * 10 | a(0=8/0 0=) b(1=8/10 0S10/10)"},
        // Title and switch at opposite edges of one row.
        {"as", {"V:|-5-[a]", "V:|[s]", "H:|[a]", "H:[s]|"}, "0 * 0 . 0 | a(0S5/0 0S) s(0S 1E)"},
        {"as",
         {"V:|-5-[a]", "V:|[s]", "H:|[a(share)]", "H:[s(share)]|"},
         "0 * 0 . 0 | a(0S5/0 0S[0.15*]) s(0S 1E[0.15*])"},
        // Equal widths, and gaps that differ: the gaps are the lines', so the columns are equal.
        {"abc",
         {"V:|[a]|", "V:|[b]|", "V:|[c]|", "H:|-[a]-20-[b(a)]-[c(a)]-|"},
         "8 * 20 * 8 * 8 | a(0= 0=) b(0= 1=) c(0= 2=)"},
        // One of a given width, the rest to the other.
        {"ab",
         {"V:|[a]|", "V:|[b]|", "H:|-[a(share)]-[b]-|"},
         "8 . 8 * 8 | a(0= 0S[0.15*]) b(0= 1=)"},
        {"ab", {"V:|[a]|", "V:|[b]|", "H:|-[a(120)]-[b]-|"}, "8 . 8 * 8 | a(0= 0S[120]) b(0= 1=)"},
        // A switch beside its title, over texts that span both.
        {"abcs",
         {"H:|[s]-[a]-|", "H:|-[b]-|", "H:|[c]|", "V:|-[a]-[b]-[c]|", "V:|-[s]"},
         "0 . 8 * 0 | s(0S8/0 0=) a(0=8/0 1=0/8) b(1=8/0 0-1=8/8) c(2=8/0 0-1=)"},
        // A button at the right edge under rows that span.
        {"abs",
         {"H:|-[a]-|", "H:|-[b]|", "H:[s]-|", "V:|-[a][b][s]|"},
         "8 * 0 . 0 | a(0=8/0 0-1=0/8) b(1= 0-1=) s(2= 1E0/8)"},
        // Both at the bottom.
        {"ab", {"H:|-[a]-[b]-|", "V:[a]-4-|", "V:[b]-4-|"}, "8 * 8 * 8 | a(0E0/4 0=) b(0E0/4 1=)"},
        // One as high as its neighbour, and one that is centred on it.
        {"as", {"H:|-[s]-[a]-|", "V:|[a(s)]|", "V:|[s]|"}, "8 . 8 * 8 | s(0= 0=) a(0= 1=)"},
        // Sizes on no axis: nothing put anywhere comes last.
        {"ab", {"V:|-[b]-|", "H:|-[b]-|"}, "0 * 0 | b(0=8/8 0=8/8) a(1S 0S)"},
        // The same rules once more, as a screen that is shown again attaches them.
        {"a", {"V:|-[a]-|", "V:|-[a]-|", "H:|[a]|", "H:|[a]|"}, "0 * 0 | a(0=8/8 0=)"},
        // The end, and one that hangs below: the later one is what reaches the end.
        {"ab", {"V:|[a]|", "V:|[a][b]|", "H:|[a]|", "H:|[b]|"}, "0 * 0 | a(0= 0=) b(1= 0=)"},
    };
    for (const auto& [children, formats, plan] : cases) {
        SCOPED_TRACE(formats.front());
        Container container;
        for (const char* name : {"a", "b", "c", "s"})
            if (children.find(name) != std::string::npos)
                *name == 's' ? container.add<Switch>(name) : container.add(name);
        for (const std::string& format : formats)
            container.attach(format);
        EXPECT_EQ(described(container), plan);
    }
}

TEST(GridPlan, CentresWhatNothingHoldsOnBothSides) {
    Container container;
    container.add("a");
    container.add("b");
    container.attach("V:|-[a]-[b]-|", kAlignAllCentreX);
    container.attach("H:|-[a]-|");
    EXPECT_EQ(described(container), "0 * 0 | a(0=8/0 0=8/8) b(1=8/8 0C)");
}

TEST(GridPlan, KnowsWhichViewInABoxGivesItsHeight) {
    Container container;
    for (const char* name : {"a", "b", "c"})
        container.add<View>(name);
    const auto title = std::make_shared<Label>();
    (*container.views.find("b"))->addSubview(title);
    container.views.set("title", title);
    for (const char* format : {"V:|[a]-[b]-[c]|", "V:[a(title)]", "V:[b(title)]", "V:[b(>=title)]",
                               "H:[c(title)]"}) // only the second says so
        container.attach(format);
    std::vector<const View*> given;
    for (const auto& item : gridPlan(*container.view, kScreenWidth).items)
        given.push_back(item.asHighAs);
    EXPECT_EQ(given, (std::vector<const View*>{nullptr, title.get(), nullptr}));
}

TEST(GridPlan, AScreenGivesItsHeightToWhatScrolls) {
    Container container;
    container.add<ScrollView>("scroll");
    container.add<Button>("a");
    container.attach("V:|-30-[scroll]-[a]-|");
    container.attach("H:|[scroll(==container)]|");
    container.attach("H:|-[a]-|");
    EXPECT_EQ(gridPlan(*container.view, kScreenWidth).rowFills, (std::vector{true, false}));

    View& scroll = **container.views.find("scroll");
    scroll.addSubview(
        std::make_shared<View>()); // its width is said where only an ancestor hears it
    const GridPlan plan = gridPlan(scroll, kScreenWidth);
    EXPECT_TRUE(plan.scrolls);
    EXPECT_EQ(plan.items[0].column.alignment, GridPlan::Alignment::Stretch);
}

TEST(GridPlan, ContradictionsLeaveARowForEach) {
    const std::vector<std::vector<std::string>> cases = {
        {"V:[a]-[b]-[a]", "H:|-[a]-|"},
        {"H:[a]-[a]"},
        {"V:|[a]|", "V:|[b]|", "H:|[a]|", "H:|[b]|"},
        {"V:|[a]", "V:|[b]", "V:|-[c]"},
    };
    for (const auto& formats : cases) {
        SCOPED_TRACE(formats.front());
        Container container;
        for (const char* name : {"a", "b", "c"})
            container.add(name);
        for (const std::string& format : formats)
            container.attach(format);
        const GridPlan plan = gridPlan(*container.view, kScreenWidth);
        ASSERT_EQ(plan.items.size(), 3U);
        EXPECT_EQ(plan.columns.size(), 1U);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(plan.items[i].view, container.view->subviews()[i].get());
            EXPECT_EQ(plan.items[i].row.first, i);
        }
    }
}

} // namespace
