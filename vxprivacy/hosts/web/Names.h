#pragma once

#include <string>
#include <string_view>

#include "vxprivacy/hosts/web/Elements.h"
#include "vxprivacy/platform/ui/GridPlan.h"

namespace vx::web {

/// Ids of what is on every page (Page.cpp): its title, and why a button is not enabled yet.
inline constexpr std::string_view kPageTitle = "title";
inline constexpr std::string_view kNotYet = "not-yet";

/// The id of the element that shows how many a label counts, in the element with the id `label`.
std::string countId(const std::string& label);
/// Puts down by which labels the switches and buttons of a container are named and described for
/// those who do not see the page.
void nameControls(Elements& elements, View& container, const GridPlan& plan);
/// Ids of the elements that name a switch, each after a space. Its own stands for its row's title,
/// which is its `aria-label` where it has a text of its own too.
std::string namesOf(const Element& control);
/// Ids of those that describe it; empty: none.
std::string descriptionsOf(const Element& control);

} // namespace vx::web
