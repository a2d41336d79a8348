#include "platform/word/layout/BorderRules.h"

namespace qvnd::layout {

double roomOf(const word::Border& side) { return side.visible ? side.space + side.thickness : 0; }

void addRule(Layer& layer, const word::Border& side, PathPoint from, PathPoint to) {
    if (side.visible) {
        layer.rules.push_back({from.x, from.y, to.x, to.y, static_cast<double>(side.width),
                               side.isDouble, side.colour});
    }
}

} // namespace qvnd::layout
