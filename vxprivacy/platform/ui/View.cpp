// The tree of views: its properties, its constraints, and its account of what changed.

#include "vxprivacy/platform/ui/View.h"

#include <algorithm>
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

const AttachedConstraints& View::attached() const {
    static const AttachedConstraints none;
    return constraints_ ? *constraints_ : none;
}

const View::Rare& View::rare() const {
    static const Rare none;
    return rare_ ? *rare_ : none;
}

View::Rare& View::ownRare() {
    if (!rare_)
        rare_ = std::make_unique<Rare>();
    return *rare_;
}

void View::setBackgroundColor(const Colour& colour) {
    setRare(&Rare::background, std::optional(colour));
}

void View::setRow(std::shared_ptr<const Row> row) {
    setRare(&Rare::row, std::move(row));
}

void View::setBorder(const Border& border) {
    setRare(&Rare::border, border);
}

void View::setSize(double width, double height) {
    setRare(&Rare::width, width);
    setRare(&Rare::height, height);
}

void View::setCompressionResistance(float priority) {
    setRare(&Rare::compressionResistance, priority);
}

void View::addTapRecogniser(std::function<void(std::size_t)> action) {
    ownRare().tap = std::move(action);
    changed(ViewChange::What::Properties);
}

// A copy, as the action may make the view forget it.
void View::tap(std::size_t character) const {
    if (const auto action = rare().tap)
        action(character);
}

void View::forgetActions() {
    if (rare_)
        rare_->tap = nullptr;
    for (const auto& subview : subviews_)
        subview->forgetActions();
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

bool View::concernsOwnTree(const LayoutConstraint& constraint) const {
    return constraint.firstItem && constraint.firstItem->isDescendantOf(*this) &&
           (!constraint.secondItem || constraint.secondItem->isDescendantOf(*this));
}

void View::addConstraints(VisualFormat format) {
    std::erase_if(format.constraints,
                  [&](const LayoutConstraint& constraint) { return !concernsOwnTree(constraint); });
    if (format.constraints.empty())
        return;
    if (!constraints_)
        constraints_ = std::make_unique<AttachedConstraints>();
    constraints_->add(format);
    changed(ViewChange::What::Subviews);
}

void View::removeConstraints(const std::function<bool(const LayoutConstraint&)>& chosen) {
    if (constraints_ && constraints_->remove(chosen))
        changed(ViewChange::What::Subviews);
}

void View::dropConstraintsOn(const View& removed) {
    const auto concerns = [&](const View* item) { return item && item->isDescendantOf(removed); };
    removeConstraints([&](const LayoutConstraint& constraint) {
        return concerns(constraint.firstItem) || concerns(constraint.secondItem);
    });
}

void View::changed(ViewChange::What what) {
    View* root = this;
    while (root->superview_)
        root = root->superview_;
    if (root->rare_ && root->rare_->changes)
        root->rare_->changes->push_back({shared_from_this(), what});
}

void View::beginRecordingChanges() {
    if (!rare().changes)
        ownRare().changes.emplace();
}

std::vector<ViewChange> View::takeChanges() {
    if (!rare().changes)
        return {};
    std::vector<ViewChange> taken;
    std::set<std::pair<const View*, ViewChange::What>> known;
    for (ViewChange& change : std::exchange(*rare_->changes, {}))
        if (known.emplace(change.view.get(), change.what).second &&
            change.view->isDescendantOf(*this))
            taken.push_back(std::move(change));
    return taken;
}

} // namespace vx
