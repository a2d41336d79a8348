#include "platform/word/layout/ParagraphBorders.h"

namespace qvnd::layout {

namespace {

using word::Border;

void addRule(Strip& strip, const Border& side, double x1, double y1, double x2, double y2) {
    if (side.visible) {
        strip.layer.rules.push_back(
            {x1, y1, x2, y2, static_cast<double>(side.width), side.isDouble, side.colour});
    }
}

double roomOf(const Border& side) { return side.visible ? side.space + side.thickness : 0; }

// The distance of a border's first stroke from the text. Strokes follow each other to the right and
// downwards, on the left and above towards the text.
double firstStroke(const Border& side) {
    return side.isDouble ? side.space + 2.0 * side.width : side.space;
}

} // namespace

void addBorders(Strips& lines, const word::ResolvedParagraph& format, double left, double right) {
    const double x1 = left - format.leftSide.space;
    const double x2 = right + format.rightSide.space;
    for (Strip& line : lines) {
        if (format.background) {
            line.layer.fills.insert(line.layer.fills.begin(),
                                    {left, 0, right - left, line.height, *format.background});
        }
        const double outer = left - firstStroke(format.leftSide);
        addRule(line, format.leftSide, outer, 0, outer, line.height);
        addRule(line, format.rightSide, x2, 0, x2, line.height);
    }
    Strip& first = lines.front();
    Strip& last = lines.back();
    const double top = -firstStroke(format.topSide);
    addRule(first, format.topSide, x1, top, x2, top);
    const double foot = last.height + format.bottomSide.space;
    addRule(last, format.bottomSide, x1, foot, x2, foot);
    first.before += roomOf(format.topSide);
    last.after += roomOf(format.bottomSide);
}

} // namespace qvnd::layout
