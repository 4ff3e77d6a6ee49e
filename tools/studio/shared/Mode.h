#pragma once

namespace vx::tools::studio {

/// What the application asks its user about: the publisher's categories, or the IAB's purposes and
/// vendors.
enum class Mode { Category, IAB };

} // namespace vx::tools::studio
