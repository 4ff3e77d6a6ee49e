#pragma once

#include <string>

#include "vxprivacy/hosts/web/Elements.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx::web {

/// What the look's style sheets call a view: its kind, and what it is by its place in the tree.
///
/// A container with a line around it is a "box", one with a switch in it a "row". Buttons that have
/// a container to themselves are its "feet", and where it does not scroll a "bar" of "answers"; a
/// button beside what scrolls leads "onward". "filled" is what has a ground of its own.
std::string classesOf(const View& view, const Element& element);

} // namespace vx::web
