#pragma once

namespace vx {

/// A colour; every component from 0 to 1. As it stands it is opaque black.
struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;
    /// 0 is clear, 1 opaque. Colours from a document are always opaque.
    double alpha = 1;

    friend bool operator==(const Colour&, const Colour&) = default;
};

} // namespace vx
