#include "platform/word/layout/PageModel.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace qvnd::layout {

namespace {

template <class Item, class Move>
void appendMoved(std::vector<Item>& to, std::vector<Item>& from, const Move& move) {
    for (Item& item : from) {
        move(item);
    }
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

template <class Item>
void moveEnd(Item& item, double down) {
    if (item.endsAt) {
        *item.endsAt += down;
    }
}

// `bottom`: how far down the item reaches.
template <class Item>
void endAt(Item& item, double y, double bottom) {
    if (bottom > y) {
        item.endsAt = std::min(y, item.endsAt.value_or(y));
    }
}

// The thousandth of a point that is cut off from the height of paper of so many twips, in twips.
double cutOff(double height) {
    constexpr double hundredthsOfMillimetre = 2540.0 / 1440; // in a twip
    constexpr double thousandthsOfPoint = 72000.0 / 2540;    // in a hundredth of a millimetre
    constexpr double twips = 20.0 / 1000;                    // in a thousandth of a point
    const double paper = std::round(height * hundredthsOfMillimetre) * thousandthsOfPoint;
    return (paper - std::floor(paper)) * twips;
}

} // namespace

Plane planeOfDrawing(bool isBehindText, std::uint32_t order, std::size_t part) {
    constexpr Plane side = Plane{1} << 52; // more than all drawings take
    constexpr Plane parts = 4096;          // a group of more has the others on its last plane
    const Plane within = order * parts + std::min(static_cast<Plane>(part), parts - 1);
    return (isBehindText ? -side : side) + within;
}

void Layer::append(Layer other, double right, double down) {
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
    appendMoved(pictures, other.pictures, [&](PlacedPicture& picture) {
        moveCorner(picture);
        moveEnd(picture, down);
    });
    appendMoved(rules, other.rules, [&](Rule& rule) {
        rule.x1 += right;
        rule.x2 += right;
        rule.y1 += down;
        rule.y2 += down;
    });
    appendMoved(texts, other.texts, [&](PlacedText& text) {
        text.x += right;
        text.baseline += down;
        moveEnd(text, down);
    });
}

void Layer::movePlanes(Plane by) {
    const auto move = [by](auto& items) {
        for (auto& item : items) {
            item.plane += by;
        }
    };
    move(fills);
    move(textArt);
    move(outlines);
    move(pictures);
    move(rules);
    move(texts);
}

void Layer::cutBelow(double y, double left, double right, bool keepsTexts) {
    constexpr double below = 0.35; // of a font's size, that letters reach below their baseline
    const auto isWithin = [&](const auto& item) { return item.x >= left && item.x < right; };
    std::erase_if(fills, [&](const Fill& fill) { return isWithin(fill) && fill.y >= y; });
    std::erase_if(pictures, [&](const PlacedPicture& picture) {
        return isWithin(picture) && picture.y >= y;
    });
    std::erase_if(outlines, [&](const Outline& outline) {
        const PathPoint corner = upperLeft(outline.path);
        return corner.x >= left && corner.x < right && corner.y >= y;
    });
    std::erase_if(texts, [&](const PlacedText& text) {
        return !keepsTexts && isWithin(text) && text.baseline - text.size >= y;
    });
    const auto begins = [&](const Rule& rule) {
        const double x = std::min(rule.x1, rule.x2);
        return x >= left && x < right;
    };
    std::erase_if(rules,
                  [&](const Rule& rule) { return begins(rule) && std::min(rule.y1, rule.y2) > y; });
    for (Rule& rule : rules) {
        rule.y1 = begins(rule) ? std::min(rule.y1, y) : rule.y1;
        rule.y2 = begins(rule) ? std::min(rule.y2, y) : rule.y2;
    }
    for (Fill& fill : fills) {
        fill.height = isWithin(fill) ? std::min(fill.height, y - fill.y) : fill.height;
    }
    for (PlacedPicture& picture : pictures) {
        if (isWithin(picture)) {
            endAt(picture, y, picture.y + picture.height);
        }
    }
    for (PlacedText& text : texts) {
        if (isWithin(text)) {
            endAt(text, y, text.baseline + below * text.size);
        }
    }
}

void Page::alignLikeOffice() {
    constexpr double tenth = 2;      // of a point, in twips
    constexpr double middle = 0.501; // a sum of fractions may fall a little short of it
    const double lower = cutOff(height);
    for (PlacedText& text : layer.texts) {
        text.baseline = std::floor(text.baseline / tenth + middle) * tenth + lower;
    }
}

} // namespace qvnd::layout
