#pragma once

#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// The floating objects on the current page that text wraps around.
class PageObstacles {
public:
    // Adds the floating objects of strips, which are stacked from `frame.anchorTop` downwards.
    // Objects in table cells are ignored.
    void add(const Strips& strips, const FloatFrame& frame);
    // The obstacles within a part of a column, relative to its upper left corner. An obstacle with
    // text on one side only extends to the edge of the column on the other side.
    std::vector<Obstacle> within(const PageArea& part) const;
    // Removes the objects that are anchored at or after that character.
    void forgetFrom(word::Cp at);
    void clear() { placed_.clear(); }

private:
    struct Placed {
        word::Cp anchor = 0;
        Obstacle obstacle;
        FloatPlace::Side side = FloatPlace::Side::both;
    };
    std::vector<Placed> placed_;
};

} // namespace qvnd::layout
