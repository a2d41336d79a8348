#include "platform/word/layout/EmphasisMarks.h"

#include <algorithm>
#include <utility>

namespace qvnd::layout {

namespace {

using Emphasis = word::ResolvedText::Emphasis;

// In parts of the font's size.
constexpr double radius = 0.07;
constexpr double gap = 0.02;
constexpr double squareBelow = 0.12; // what the square of a Chinese character has below the line
constexpr double circleLine = 0.025;

Path circle(PathPoint middle, double r) {
    constexpr double bend = 0.5523; // of the radius, for quarters of a circle
    const double b = bend * r;
    const auto at = [&](double x, double y) { return PathPoint{middle.x + x, middle.y + y}; };
    Path path;
    path.moveTo(at(r, 0));
    path.curveTo(at(r, b), at(b, r), at(0, r));
    path.curveTo(at(-b, r), at(-r, b), at(-r, 0));
    path.curveTo(at(-r, -b), at(-b, -r), at(0, -r));
    path.curveTo(at(b, -r), at(r, -b), at(r, 0));
    path.close();
    return path;
}

// A stroke that grows wider down to the right.
Path comma(PathPoint middle, double r) {
    Path path;
    path.moveTo({middle.x - r, middle.y - r});
    path.lineTo({middle.x + r, middle.y});
    path.lineTo({middle.x + r / 2, middle.y + r});
    path.close();
    return path;
}

} // namespace

void addEmphasis(const CharacterPlace& place, FontMetrics& fonts, Layer& layer) {
    const TextItem& item = place.item;
    const Emphasis emphasis = item.format->emphasis;
    if (emphasis == Emphasis::none || isBlank(item.character)) {
        return;
    }
    const double width =
        fonts.advance(item.face, item.character) * item.size * item.format->scalePercent / 100;
    const double r = radius * item.size;
    const double baseline = place.foot - item.raised;
    const double above = baseline - (fonts.heights(item.face).ascent + gap) * item.size - r;
    const double below = baseline + (squareBelow + gap) * item.size + r;
    const PathPoint middle{place.x + width / 2, emphasis == Emphasis::dotBelow ? below : above};
    const std::uint32_t colour = item.format->colour.value_or(0);
    Outline mark;
    mark.path = emphasis == Emphasis::commaAbove ? comma(middle, r) : circle(middle, r);
    mark.hasLine = emphasis == Emphasis::circleAbove;
    if (mark.hasLine) {
        mark.lineWidth = circleLine * item.size;
        mark.lineColour = colour;
    } else {
        mark.fill = colour;
    }
    layer.outlines.push_back(std::move(mark));
}

} // namespace qvnd::layout
