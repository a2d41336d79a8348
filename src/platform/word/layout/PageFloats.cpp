#include "platform/word/layout/PageFloats.h"

namespace qvnd::layout {

FloatFrame frameOn(const word::SectionPaper& paper, double columnLeft, double columnWidth,
                   double anchorTop) {
    FloatFrame frame;
    frame.page = {0, 0, static_cast<double>(paper.width), static_cast<double>(paper.height)};
    frame.margins = {static_cast<double>(paper.left), static_cast<double>(paper.top),
                     paper.left + static_cast<double>(paper.textWidth()),
                     static_cast<double>(paper.height - paper.bottom)};
    frame.column = {columnLeft, 0, columnLeft + columnWidth, 0};
    frame.anchorTop = anchorTop;
    return frame;
}

void putOn(Page& page, const AnchoredFloat& floating, FloatFrame frame) {
    frame.anchorTop += floating.y;
    if (floating.columnWidth > 0) {
        const double left = frame.column.left + floating.x;
        frame.column = {left, 0, left + floating.columnWidth, 0};
    }
    const PageArea area = areaOf(floating.place, frame);
    page.layer.append(floating.layer, area.left, area.top);
    frame.column = {area.left, 0, area.right, 0};
    frame.anchorTop = area.top;
    for (const AnchoredFloat& held : floating.held) {
        putOn(page, held, frame);
    }
}

void putOn(Page& page, const Stack& stack, const word::SectionPaper& paper, double top) {
    page.layer.append(stack.layer, paper.left, top);
    for (const AnchoredFloat& floating : stack.floats) {
        putOn(page, floating, frameOn(paper, paper.left, paper.textWidth(), top));
    }
}

} // namespace qvnd::layout
