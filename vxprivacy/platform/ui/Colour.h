#pragma once

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// A colour; every component from 0 to 1. As it stands it is opaque black.
struct VXPRIVACY_EXPORT Colour {
    double red = 0;   ///< sRGB
    double green = 0; ///< sRGB
    double blue = 0;  ///< sRGB
    double alpha = 1; ///< 0 is clear, 1 opaque; colours from a document are always opaque

    friend bool operator==(const Colour&, const Colour&) = default;
};

/// Opaque.
inline constexpr Colour kWhite = {1, 1, 1, 1};
/// Of the title of every link, and of buttons that a configuration gives no colour.
inline constexpr Colour kLinkColour = {0.05, 0.4, 0.65, 1};

} // namespace vx
