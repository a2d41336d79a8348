#include "platform/word/layout/PageModel.h"

#include <cmath>
#include <utility>

namespace qvnd::layout {

namespace {

template <class Item, class Move>
void appendMoved(std::vector<Item>& to, const std::vector<Item>& from, const Move& move) {
    for (Item item : from) {
        move(item);
        to.push_back(std::move(item));
    }
}

} // namespace

void Layer::append(const Layer& other, double right, double down) {
    const auto moveCorner = [&](auto& item) {
        item.x += right;
        item.y += down;
    };
    appendMoved(fills, other.fills, moveCorner);
    appendMoved(textArt, other.textArt, moveCorner);
    appendMoved(outlines, other.outlines, [&](Outline& outline) {
        for (PathPoint& point : outline.path.points) {
            moveCorner(point);
        }
    });
    appendMoved(pictures, other.pictures, moveCorner);
    appendMoved(rules, other.rules, [&](Rule& rule) {
        rule.x1 += right;
        rule.x2 += right;
        rule.y1 += down;
        rule.y2 += down;
    });
    appendMoved(texts, other.texts, [&](PlacedText& text) {
        text.x += right;
        text.baseline += down;
    });
}

void Layer::alignBaselines(double step) {
    constexpr double middle = 0.501; // a sum of fractions may fall a little short of it
    for (PlacedText& text : texts) {
        text.baseline = std::floor(text.baseline / step + middle) * step;
    }
}

} // namespace qvnd::layout
