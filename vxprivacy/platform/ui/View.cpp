#include "vxprivacy/platform/ui/View.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace vx {

View::~View() {
    for (const auto& subview : subviews_)
        subview->superview_ = nullptr;
}

std::shared_ptr<View> View::viewWithTag(std::int32_t tag) {
    if (tag_ == tag)
        return shared_from_this();
    for (const auto& subview : subviews_)
        if (auto found = subview->viewWithTag(tag))
            return found;
    return nullptr;
}

const View::Border& View::border() const {
    static const Border none;
    return border_ ? *border_ : none;
}

void View::setBorder(const Border& border) {
    if (border == this->border())
        return;
    border_ = std::make_unique<Border>(border);
    changed(ViewChange::What::Properties);
}

void View::setSize(double width, double height) {
    set(width_, width);
    set(height_, height);
}

void View::addTapRecogniser(std::function<void(std::size_t)> action) {
    tap_ = std::move(action);
    changed(ViewChange::What::Properties);
}

void View::tap(std::size_t character) const {
    if (tap_)
        tap_(character);
}

void View::addSubview(const std::shared_ptr<View>& view) {
    view->removeFromSuperview();
    view->superview_ = this;
    subviews_.push_back(view);
    changed(ViewChange::What::Subviews);
}

void View::removeFromSuperview() {
    if (!superview_)
        return;
    const auto kept = shared_from_this(); // the superview may hold the last reference
    View& parent = *superview_;
    for (View* ancestor = &parent; ancestor; ancestor = ancestor->superview_)
        ancestor->dropConstraintsOn(*this);
    std::erase(parent.subviews_, kept);
    superview_ = nullptr;
    parent.changed(ViewChange::What::Subviews);
}

bool View::isDescendantOf(const View& view) const {
    for (const View* at = this; at; at = at->superview_)
        if (at == &view)
            return true;
    return false;
}

void View::addConstraints(std::vector<LayoutConstraint> constraints) {
    constraints_.insert(constraints_.end(), std::make_move_iterator(constraints.begin()),
                        std::make_move_iterator(constraints.end()));
    changed(ViewChange::What::Subviews);
}

void View::dropConstraintsOn(const View& removed) {
    const auto concerns = [&](const std::weak_ptr<View>& item) {
        const auto view = item.lock();
        return view && view->isDescendantOf(removed);
    };
    std::erase_if(constraints_, [&](const LayoutConstraint& constraint) {
        return concerns(constraint.firstItem) || concerns(constraint.secondItem);
    });
}

void View::changed(ViewChange::What what) {
    View* root = this;
    while (root->superview_)
        root = root->superview_;
    if (root->changes_)
        root->changes_->push_back({shared_from_this(), what});
}

void View::beginRecordingChanges() {
    if (!changes_)
        changes_ = std::make_unique<std::vector<ViewChange>>();
}

std::vector<ViewChange> View::takeChanges() {
    if (!changes_)
        return {};
    std::vector<ViewChange> taken;
    std::set<std::pair<const View*, ViewChange::What>> known;
    for (ViewChange& change : std::exchange(*changes_, {}))
        if (known.emplace(change.view.get(), change.what).second &&
            change.view->isDescendantOf(*this))
            taken.push_back(std::move(change));
    return taken;
}

} // namespace vx
