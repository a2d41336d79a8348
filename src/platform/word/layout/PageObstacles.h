#pragma once

#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// What floats on the page being filled and has lines keep clear of it.
class PageObstacles {
public:
    // What floats in these strips, which stand one under the other from `frame.anchorTop` on. What
    // floats in a cell of a table is in the way of nothing.
    void add(const Strips& strips, const FloatFrame& frame);
    // Those that reach into a part of a column, from its upper left corner; where text stands on
    // one side alone, they reach to the column's other end.
    std::vector<Obstacle> within(const PageArea& part) const;
    // Forgets those anchored at that character or behind it.
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
