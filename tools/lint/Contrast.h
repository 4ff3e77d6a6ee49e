#pragma once

#include <string>

#include "vxprivacy/platform/ui/Colour.h"

namespace vx::tools::lint {

/// "#1F6F78"; alpha is left out.
std::string hexadecimal(const Colour& colour);

/// The contrast of two opaque colours as WCAG 2.2 defines it, from 1 to 21.
double contrast(const Colour& one, const Colour& other);

/// The colour next to `colour`, lighter or darker and of the same hue, that has a contrast of
/// `least` to `ground`; at most 4.5, which every ground allows.
Colour nearestWithContrast(const Colour& colour, const Colour& ground, double least);

} // namespace vx::tools::lint
