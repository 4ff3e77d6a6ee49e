#include <array>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "vxprivacy/platform/ui/VisualFormat.h"
#include "vxprivacy/testing/World.h"

namespace {

using namespace vx;

// A container "c" with the children "a", "b" and "c_2".
struct Screen {
    Screen() {
        views.set("c", std::make_shared<View>());
        for (const char* name : {"a", "b", "c_2"}) {
            auto child = std::make_shared<View>();
            (*views.find("c"))->addSubview(child);
            views.set(name, child);
        }
        views.set("loose", std::make_shared<View>());
        metrics.set("wide", 300);
        metrics.set("low", 250.5);
    }

    std::string nameOf(const View* item) const {
        for (const auto& [name, view] : views)
            if (view.get() == item)
                return name;
        return "";
    }

    std::string described(std::string_view format, int options = 0) const {
        constexpr std::array attributes = {"",      "left",   "right", "top", "bottom",
                                           "width", "height", "midX",  "midY"};
        constexpr std::array relations = {"<=", "==", ">="};
        std::ostringstream text;
        const auto made = constraintsWithVisualFormat(format, options, metrics, views);
        for (const auto& each : made.constraints) {
            text << nameOf(each.firstItem) << '.'
                 << attributes[static_cast<std::size_t>(each.firstAttribute)]
                 << relations[static_cast<std::size_t>(each.relation)];
            if (each.secondAttribute != LayoutConstraint::Attribute::None)
                text << nameOf(each.secondItem) << '.'
                     << attributes[static_cast<std::size_t>(each.secondAttribute)] << '+';
            text << each.constant;
            if (each.priority != 1000)
                text << '@' << each.priority;
            text << ' ';
        }
        return text.str();
    }

    recording::World world;
    ViewsDictionary views;
    MetricsDictionary metrics;
};

TEST(VisualFormat, MakesTheConstraintsThatTheStringDescribes) {
    const Screen screen;
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"[a]", ""},
        {"|[a]|", "a.left==c.left+0 c.right==a.right+0 "},
        {"H:|-[a]-10-[b]-|", "a.left==c.left+8 b.left==a.right+10 c.right==b.right+8 "},
        {"V:|-5-[a][c_2]", "a.top==c.top+5 c_2.top==a.bottom+0 "},
        {"H:[a(<=c)]-wide-|", "a.width<=c.width+0 c.right==a.right+300 "},
        {"V:[a(==b)]", "a.height==b.height+0 "},
        {"[a(wide)]", "a.width==300 "},
        {"[a(.5@7.)]", "a.width==0.5@7 "},
        {"[a(>=20@low,<=30)]", "a.width>=20@250.5 a.width<=30 "},
        {"|-(20)-[a]-(>=1,<=2@5)-|", "a.left==c.left+20 c.right>=a.right+1 c.right<=a.right+2@5 "}};
    for (const auto& [format, constraints] : cases)
        EXPECT_EQ(screen.described(format), constraints) << format;
    for (const char* chainWithoutViews : {"V:|-|", "|-|", "V:|-10-|"}) {
        EXPECT_EQ(screen.described(chainWithoutViews), "");
        EXPECT_TRUE(screen.world.events().empty());
    }
    EXPECT_EQ(screen.described("V:[a][b]", kAlignAllCentreX | kAlignAllCentreY),
              "b.top==a.bottom+0 b.midX==a.midX+0 b.midY==a.midY+0 ");
}

TEST(VisualFormat, ABadStringMakesNothingAndSaysWhere) {
    Screen screen;
    const std::vector<std::pair<std::string, int>> cases = {
        {"", 0},
        {"|", 1},
        {"||", 2},
        {"V:", 2},
        {"a", 0},
        {"[]", 1},
        {"[a", 2},
        {"[a]-", 4},
        {"[a]-x-", 6},
        {"[a(]", 3},
        {"[a(5]", 4},
        {"[a(.)]", 3},
        {"[a(1e3)]", 4},
        {"[a(" + std::string(400, '9') + ")]", 3},
        {"[a]-10[b]", 6},
        {"[a]-(-3)-[b]", 5},
        {"[nobody]", 0},
        {"[a(nobody)]", 0},
        {"[a]-nobody-[b]", 0},
        {"|[loose]", 0},
        {"|[a]|[b]", 5},
        {"[a]x", 3},
        {"[a(==)]", 5}};
    for (const auto& [format, place] : cases) {
        SCOPED_TRACE(format);
        screen.world.clearEvents();
        EXPECT_EQ(screen.described(format), "");
        ASSERT_EQ(screen.world.events().size(), 1U);
        const auto log = screen.world.events()[0]["log"];
        EXPECT_EQ(log[0], 4);
        EXPECT_EQ(log[1].get<std::string>().find("Visual format \"" + format + "\", character " +
                                                 std::to_string(place) + ": "),
                  0U)
            << log[1];
    }
}

TEST(View, RemovalTakesTheConstraintsOutsideThatConcernIt) {
    Screen screen;
    View& container = **screen.views.find("c");
    View& a = **screen.views.find("a");
    const auto attach = [&](View& view, std::string_view format) {
        view.addConstraints(constraintsWithVisualFormat(format, 0, screen.metrics, screen.views));
    };
    attach(container, "|[a][b]|");
    attach(container, "V:|[b]|");
    attach(a, "[a(wide)]");
    attach(a, "[b(wide)]"); // which is no view of its tree
    attach(container, "H:[a(wide)]");
    a.removeFromSuperview();
    const auto& kept = container.formats();
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_EQ(kept[0].constraints, 1U); // the right edge of b
    EXPECT_EQ(kept[1].constraints, 2U); // top and bottom of b
    for (const LayoutConstraint& constraint : container.constraints()) {
        EXPECT_NE(constraint.firstItem, &a);
        EXPECT_NE(constraint.secondItem, &a);
    }
    ASSERT_EQ(a.formats().size(), 1U);
    EXPECT_EQ(a.formats()[0].text, "[a(wide)]");
}

TEST(View, KeepsAFormatWhileOneOfItsConstraintsIsAttached) {
    Screen screen;
    View& container = **screen.views.find("c");
    const auto removeWidthsBelow = [&](double points) {
        container.removeConstraints([&](const LayoutConstraint& constraint) {
            return constraint.firstAttribute == LayoutConstraint::Attribute::Width &&
                   constraint.constant < points;
        });
    };
    for (const char* format : {"[a(10)][b(20)]", "[b(5)]", "V:|[a]"})
        container.addConstraints(
            constraintsWithVisualFormat(format, 0, screen.metrics, screen.views));
    container.beginRecordingChanges();
    removeWidthsBelow(5);
    EXPECT_TRUE(container.takeChanges().empty());
    removeWidthsBelow(11);
    EXPECT_EQ(container.takeChanges().size(), 1U);
    EXPECT_EQ(container.constraints().size(), 3U);
    ASSERT_EQ(container.formats().size(), 2U);
    EXPECT_EQ(container.formats()[0].constraints, 2U); // gap and width of b
    EXPECT_EQ(container.formats()[1].text, "V:|[a]");
}

TEST(View, TellsWhatChangedSinceAHostLastLooked) {
    Screen screen;
    View& root = **screen.views.find("c");
    View& a = **screen.views.find("a");
    a.setTag(7);
    root.beginRecordingChanges();
    a.setTag(7);
    EXPECT_TRUE(root.takeChanges().empty());
    a.setTag(8);
    a.setScale(0.5);
    (*screen.views.find("b"))->setTag(9);
    (*screen.views.find("b"))->removeFromSuperview();
    const auto changes = root.takeChanges();
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].view.get(), &a);
    EXPECT_EQ(changes[1].view.get(), &root);
    EXPECT_EQ(changes[1].what, ViewChange::What::Subviews);
    EXPECT_TRUE(root.takeChanges().empty());
}

} // namespace
