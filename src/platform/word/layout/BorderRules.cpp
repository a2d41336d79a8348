#include "platform/word/layout/BorderRules.h"

#include <algorithm>
#include <vector>

namespace qvnd::layout {

namespace {

bool hasWidth(const word::BorderStroke& stroke) { return stroke.width > 0; }

// The part of a rule for a stroke: how far its middle lies from that of the innermost one.
struct Placed {
    double out = 0;
    double width = 0;
};

std::vector<Placed> placedStrokes(const word::Border& side) {
    std::vector<Placed> placed;
    placed.reserve(side.strokes.size());
    for (const word::BorderStroke& stroke : side.strokes) {
        if (hasWidth(stroke)) {
            const Placed before = placed.empty() ? Placed{0, -stroke.width} : placed.back();
            placed.push_back(
                {before.out + before.width / 2 + stroke.gap + stroke.width / 2, stroke.width});
        }
    }
    return placed;
}

} // namespace

double roomOf(const word::Border& side) { return side.visible ? side.space + side.thickness : 0; }

double spanOf(const word::Border& side) {
    const auto placed = placedStrokes(side);
    return placed.empty() ? 0 : placed.back().out;
}

double firstWidth(const word::Border& side, StrokeOrder order) {
    const auto placed = placedStrokes(side);
    return placed.empty()                     ? 0
           : order == StrokeOrder::fromInside ? placed.front().width
                                              : placed.back().width;
}

std::size_t ruleCount(const word::Border& side) {
    return side.visible ? static_cast<std::size_t>(
                              std::count_if(side.strokes.begin(), side.strokes.end(), hasWidth))
                        : 0;
}

void addRule(Layer& layer, const word::Border& side, PathPoint from, PathPoint to,
             StrokeOrder order) {
    if (!side.visible) {
        return;
    }
    const auto placed = placedStrokes(side);
    const bool isAcross = from.y == to.y;
    for (const Placed& stroke : placed) {
        const double aside =
            order == StrokeOrder::fromInside ? stroke.out : placed.back().out - stroke.out;
        const double x = isAcross ? 0 : aside;
        const double y = isAcross ? aside : 0;
        layer.rules.push_back(
            {from.x + x, from.y + y, to.x + x, to.y + y, stroke.width, side.colour});
    }
}

} // namespace qvnd::layout
