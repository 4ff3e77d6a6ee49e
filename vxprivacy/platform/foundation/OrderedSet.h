#pragma once

#include <unordered_set>
#include <vector>

namespace vx {

/// A set that is enumerated in the order in which its elements were first added.
///
///     OrderedSet<int> set;
///     for (int each : {3, 1, 3})
///         set.add(each);
///     set.elements();   // 3, 1
///
/// `Element` has a hash and is cheap to copy: each is kept twice.
template <class Element>
class OrderedSet {
public:
    /// Adds `element` at the end, unless it is there already. Constant time.
    void add(const Element& element) {
        if (present_.insert(element).second)
            elements_.push_back(element);
    }

    /// All of them, in order. Iterators are good until the next `add`.
    const std::vector<Element>& elements() const { return elements_; }
    bool empty() const { return elements_.empty(); }
    auto begin() const { return elements_.begin(); }
    auto end() const { return elements_.end(); }

private:
    std::vector<Element> elements_;
    std::unordered_set<Element> present_;
};

} // namespace vx
