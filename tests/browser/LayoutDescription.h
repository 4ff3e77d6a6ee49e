#pragma once

#include <nlohmann/json.hpp>

#include "vxprivacy/platform/ui/View.h"

namespace vx::tests {

/// The views of a tree in the order in which a page has their elements, each with "type", "parent"
/// (its place in the list, or null) and "constraints", those attached to it as
/// [first item, attribute, relation, second item or null, attribute, constant, priority, whether
/// the constant is a share of the root's width]. Items are places in the list, attributes and
/// relations their numbers.
nlohmann::json layoutDescription(View& root);

} // namespace vx::tests
