#include "platform/word/layout/ParagraphBorders.h"

#include "platform/word/layout/BorderRules.h"

namespace qvnd::layout {

namespace {

using word::Border;

// The distance of a border's first stroke from the text. Strokes follow each other to the right and
// downwards, on the left and above towards the text.
double firstStroke(const Border& side) { return side.space + spanOf(side); }

bool hasBorders(const word::ResolvedParagraph& format) {
    return format.topSide.visible || format.leftSide.visible || format.bottomSide.visible ||
           format.rightSide.visible;
}

// What runs down beside a line: its background, and the borders on its sides.
void addSides(Strip& line, const word::ResolvedParagraph& format, const TextEdges& edges,
              double top, double foot) {
    if (format.background) {
        line.layer.fills.insert(
            line.layer.fills.begin(),
            {edges.left, top, edges.right - edges.left, foot - top, *format.background});
    }
    const double x1 = edges.left - firstStroke(format.leftSide);
    const double x2 = edges.right + format.rightSide.space;
    addRule(line.layer, format.leftSide, {x1, top}, {x1, foot}, StrokeOrder::fromOutside);
    addRule(line.layer, format.rightSide, {x2, top}, {x2, foot}, StrokeOrder::fromInside);
}

} // namespace

bool shareBox(const word::ResolvedParagraph& one, const word::ResolvedParagraph& other) {
    return hasBorders(one) && one.topSide == other.topSide && one.leftSide == other.leftSide &&
           one.bottomSide == other.bottomSide && one.rightSide == other.rightSide &&
           one.between == other.between && one.left == other.left && one.right == other.right &&
           one.frame == other.frame;
}

void addBorders(Strips& lines, const word::ResolvedParagraph& format, const TextEdges& edges,
                const JoinedBorders& joined) {
    const double x1 = edges.left - format.leftSide.space;
    const double x2 = edges.right + format.rightSide.space;
    Strip& first = lines.front();
    Strip& last = lines.back();
    const Border& bottom = joined.below ? format.between : format.bottomSide;
    last.after += roomOf(bottom);
    for (Strip& line : lines) {
        const bool meetsBoxAbove = joined.above && &line == &first && line.dropped == 0;
        const double top = meetsBoxAbove ? -line.before : line.dropped;
        const double below = joined.below && &line == &last ? line.after : 0;
        addSides(line, format, edges, top, line.height + below);
    }
    if (!joined.above) {
        const double top = first.dropped - firstStroke(format.topSide);
        addRule(first.layer, format.topSide, {x1, top}, {x2, top}, StrokeOrder::fromOutside);
    }
    const double foot = last.height + bottom.space;
    addRule(last.layer, bottom, {x1, foot}, {x2, foot}, StrokeOrder::fromInside);
    first.before += joined.above ? 0 : roomOf(format.topSide);
}

} // namespace qvnd::layout
