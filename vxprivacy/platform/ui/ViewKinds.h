#pragma once

#include <type_traits>

#include "vxprivacy/platform/ui/Controls.h"
#include "vxprivacy/platform/ui/Label.h"
#include "vxprivacy/platform/ui/ScrollView.h"
#include "vxprivacy/platform/ui/View.h"

// The one place that knows which class stands behind a view's kind. Who tells views apart does it
// by `visit`, so that a new kind is missed nowhere, or by `viewAs` where one kind alone matters.

namespace vx {

/// `Wanted`, constant where the view is.
template <class Wanted, class V>
using LikeView = std::conditional_t<std::is_const_v<V>, const Wanted, Wanted>;

/// The result of calling `visitor` with `view` as the class it is of, `View` itself included. The
/// visitor's overloads have one result type; one for `View` takes what the others leave.
///
///     visit(view, Overloaded{[](const Label& label) { return label.text(); },
///                            [](const View&) { return std::string(); }});
template <class V, class Visitor>
decltype(auto) visit(V& view, Visitor&& visitor) {
    switch (view.kind()) {
    case View::Kind::Label:
        return visitor(static_cast<LikeView<Label, V>&>(view));
    case View::Kind::Button:
        return visitor(static_cast<LikeView<Button, V>&>(view));
    case View::Kind::Switch:
        return visitor(static_cast<LikeView<Switch, V>&>(view));
    case View::Kind::Scroll:
        return visitor(static_cast<LikeView<ScrollView, V>&>(view));
    default:
        return visitor(view);
    }
}

/// Function objects joined into one that has the overloads of all. For use with `visit`.
template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

/// `view` as a `Wanted`, which is one of the five classes; null when it is none.
///
///     if (auto* found = viewAs<Switch>(view))
///         found->setOn(true);
template <class Wanted, class V>
LikeView<Wanted, V>* viewAs(V& view) {
    using Result = LikeView<Wanted, V>*;
    return visit(view, Overloaded{[](LikeView<Wanted, V>& found) -> Result { return &found; },
                                  [](const View&) -> Result { return nullptr; }});
}

} // namespace vx
