#pragma once

namespace qvnd::layout {

// The flipping and rotation of a shape or a picture within its area.
struct ShapeTurn {
    bool flippedAcross = false;
    bool flippedDown = false;
    double angle = 0; // radians, clockwise, around the centre; counts behind the flipping
    bool operator==(const ShapeTurn&) const = default;
};

} // namespace qvnd::layout
