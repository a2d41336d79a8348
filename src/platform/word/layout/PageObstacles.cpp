#include "platform/word/layout/PageObstacles.h"

#include <algorithm>

namespace qvnd::layout {

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
            placed_.push_back({strip.at, {area, place.wrap == Wrap::beside}});
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
            found.push_back({{area.left - part.left, area.top - part.top, area.right - part.left,
                              area.bottom - part.top},
                             placed.obstacle.beside});
        }
    }
    return found;
}

void PageObstacles::forgetFrom(word::Cp at) {
    std::erase_if(placed_, [&](const Placed& placed) { return placed.anchor >= at; });
}

} // namespace qvnd::layout
