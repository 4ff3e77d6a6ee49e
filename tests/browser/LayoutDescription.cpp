#include "tests/browser/LayoutDescription.h"

#include <map>
#include <vector>

#include "vxprivacy/platform/ui/GridPlanner.h"
#include "vxprivacy/platform/ui/ViewKinds.h"

namespace vx::tests {

namespace {

using Json = nlohmann::json;

void list(View& view, double width, std::vector<View*>& views) {
    views.push_back(&view);
    for (const GridPlan::Item& item : gridPlan(view, width).items)
        list(*item.view, width, views);
}

const char* typeOf(View& view) {
    return visit(view,
                 Overloaded{[](Label&) { return "label"; }, [](Button&) { return "button"; },
                            [](Switch&) { return "switch"; }, [](ScrollView&) { return "scroll"; },
                            [](View&) { return "view"; }});
}

} // namespace

Json layoutDescription(View& root) {
    std::vector<View*> views;
    list(root, root.width(), views);
    std::map<const View*, std::size_t> places;
    for (View* view : views)
        places.emplace(view, places.size());
    const auto placeOf = [&](const View* view) { return view ? Json(places.at(view)) : Json(); };
    Json all = Json::array();
    for (View* view : views) {
        Json constraints = Json::array();
        for (const LayoutConstraint& each : view->constraints())
            constraints.push_back({placeOf(each.firstItem), each.firstAttribute, each.relation,
                                   placeOf(each.secondItem), each.secondAttribute,
                                   each.metric ? each.constant / root.width() : each.constant,
                                   each.priority, each.metric});
        all.push_back({{"type", typeOf(*view)},
                       {"parent", view == &root ? Json() : placeOf(view->superview())},
                       {"constraints", constraints}});
    }
    return all;
}

} // namespace vx::tests
