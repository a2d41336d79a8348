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

double roomOf(const Border& side) { return side.visible ? side.space + side.width : 0; }

} // namespace

void addBorders(Strips& lines, const word::ResolvedParagraph& format, double left, double right) {
    const double x1 = left - format.leftSide.space;
    const double x2 = right + format.rightSide.space;
    for (Strip& line : lines) {
        if (format.background) {
            line.layer.fills.insert(line.layer.fills.begin(),
                                    {left, 0, right - left, line.height, *format.background});
        }
        addRule(line, format.leftSide, x1, 0, x1, line.height);
        addRule(line, format.rightSide, x2, 0, x2, line.height);
    }
    Strip& first = lines.front();
    Strip& last = lines.back();
    addRule(first, format.topSide, x1, -format.topSide.space, x2, -format.topSide.space);
    const double foot = last.height + format.bottomSide.space;
    addRule(last, format.bottomSide, x1, foot, x2, foot);
    first.before += roomOf(format.topSide);
    last.after += roomOf(format.bottomSide);
}

} // namespace qvnd::layout
