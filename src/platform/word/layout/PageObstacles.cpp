#include "platform/word/layout/PageObstacles.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

// The area together with the side of it, in a column of that width, that has no text. Of two sides
// that are as wide the left one has the text.
PageArea oneSided(PageArea area, FloatPlace::Side side, double width) {
    using Side = FloatPlace::Side;
    const bool moreAtLeft = area.left >= width - area.right;
    if (side == Side::left || (side == Side::wider && moreAtLeft)) {
        area.right = std::max(area.right, width);
    } else if (side == Side::right || side == Side::wider) {
        area.left = std::min(area.left, 0.0);
    }
    return area;
}

} // namespace

void PageObstacles::add(const Strips& strips, const FloatFrame& frame) {
    using Wrap = FloatPlace::Wrap;
    FloatFrame at = frame;
    double top = frame.anchorTop;
    for (const Strip& strip : strips) {
        for (const AnchoredFloat& floating : strip.floats) {
            const FloatPlace& place = floating.place;
            if (place.wrap == Wrap::none || floating.columnWidth > 0) {
                continue;
            }
            at.anchorTop = top + floating.y;
            PageArea area = areaOf(place, at);
            area.left -= place.apartAcross;
            area.right += place.apartAcross;
            area.top -= place.apartDown;
            area.bottom += place.apartDown;
            placed_.push_back({strip.at, {area, place.wrap == Wrap::beside}, place.side});
        }
        top += strip.height;
    }
}

std::vector<Obstacle> PageObstacles::within(const PageArea& part) const {
    std::vector<Obstacle> found;
    for (const Placed& placed : placed_) {
        const PageArea& area = placed.obstacle.area;
        if (area.top < part.bottom && area.bottom > part.top && area.left < part.right &&
            area.right > part.left) {
            const PageArea inner{area.left - part.left, area.top - part.top, area.right - part.left,
                                 area.bottom - part.top};
            found.push_back(
                {oneSided(inner, placed.side, part.right - part.left), placed.obstacle.beside});
        }
    }
    return found;
}

void PageObstacles::forgetFrom(word::Cp at) {
    std::erase_if(placed_, [&](const Placed& placed) { return placed.anchor >= at; });
}

} // namespace qvnd::layout
