#include <memory>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "vxprivacy/platform/ui/Controls.h"
#include "vxprivacy/platform/ui/GridPlanner.h"

namespace {

using namespace vx;

// A constraint of any two views of a small tree, however senseless.
LayoutConstraint anyConstraint(const std::vector<std::shared_ptr<View>>& views) {
    LayoutConstraint constraint;
    constraint.firstItem = (*rc::gen::elementOf(views)).get();
    constraint.firstAttribute = static_cast<LayoutConstraint::Attribute>(*rc::gen::inRange(0, 9));
    constraint.relation = static_cast<LayoutConstraint::Relation>(*rc::gen::inRange(0, 3));
    if (*rc::gen::inRange(0, 4) > 0) {
        constraint.secondItem = (*rc::gen::elementOf(views)).get();
        constraint.secondAttribute =
            static_cast<LayoutConstraint::Attribute>(*rc::gen::inRange(0, 9));
    }
    constraint.constant = *rc::gen::element(0.0, 8.0, -5.0, 1e300, 0.0 / 0.0, 1.0 / 0.0);
    constraint.metric = *rc::gen::arbitrary<bool>();
    return constraint;
}

void checkPlaces(const GridPlan& plan) {
    std::set<std::pair<std::size_t, std::size_t>> taken;
    for (const auto& item : plan.items) {
        for (const auto* place : {&item.column, &item.row}) {
            RC_ASSERT(place->first < place->last);
            RC_ASSERT(place->before >= 0 && place->after >= 0);
        }
        RC_ASSERT(item.column.last <= plan.columns.size());
        RC_ASSERT(item.row.last <= plan.rowFills.size());
        for (std::size_t row = item.row.first; row < item.row.last; ++row)
            for (std::size_t column = item.column.first; column < item.column.last; ++column)
                RC_ASSERT(taken.emplace(row, column).second);
    }
}

RC_GTEST_PROP(GridPlan, PlacesEveryChildOnceAndNoTwoOnOneSpotWhateverTheRules, ()) {
    auto container = std::make_shared<View>();
    std::vector views{container};
    const int children = *rc::gen::inRange(0, 12);
    for (int i = 0; i < children; ++i) {
        views.push_back(i % 3 == 0 ? std::make_shared<Switch>() : std::make_shared<View>());
        container->addSubview(views.back());
    }
    auto stranger = std::make_shared<View>();
    if (children > 0)
        views[1]->addSubview(stranger);
    views.push_back(stranger);
    const int rules = *rc::gen::inRange(0, 40);
    for (int i = 0; i < rules; ++i)
        container->addConstraints({"", 0, {anyConstraint(views)}});

    const GridPlan plan = gridPlan(*container, 400);
    std::set<const View*> placed;
    for (const auto& item : plan.items)
        placed.insert(item.view);
    RC_ASSERT(plan.items.size() == container->subviews().size());
    RC_ASSERT(placed.size() == plan.items.size());
    checkPlaces(plan);
}

} // namespace
