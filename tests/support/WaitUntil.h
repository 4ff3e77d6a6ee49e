#pragma once

#include <functional>

namespace vx::tests {

/// Asks `condition` again and again until it holds; false when it does not within half a minute.
bool waitUntil(const std::function<bool()>& condition);

} // namespace vx::tests
