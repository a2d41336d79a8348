#include "platform/word/layout/PageLook.h"

#include "platform/word/layout/BorderRules.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace qvnd::layout {

namespace {

using word::PageBorders;
using word::ResolvedSection;

bool standsOn(PageBorders::Pages pages, bool isFirst) {
    return pages == PageBorders::Pages::all || (pages == PageBorders::Pages::first) == isFirst;
}

// The outer edges of the borders.
PageArea outerEdges(const PageBorders& borders, const PageArea& text, const Page& page) {
    if (borders.fromEdge) {
        return {static_cast<double>(borders.left.space), static_cast<double>(borders.top.space),
                page.width - borders.right.space, page.height - borders.bottom.space};
    }
    return {text.left - roomOf(borders.left), text.top - roomOf(borders.top),
            text.right + roomOf(borders.right), text.bottom + roomOf(borders.bottom)};
}

} // namespace

word::SectionPaper mirrored(word::SectionPaper paper) {
    std::swap(paper.left, paper.right);
    return paper;
}

TextRoom textRoom(const ResolvedSection& section, double headerHeight, double footerHeight) {
    constexpr double least = 720; // twips that headers and footers leave
    const word::SectionPaper& paper = section.paper;
    TextRoom room{static_cast<double>(paper.top), static_cast<double>(paper.height - paper.bottom)};
    if (!section.topIsFixed && headerHeight > 0) {
        room.top = std::max(room.top, section.headerTop + headerHeight);
    }
    if (!section.bottomIsFixed && footerHeight > 0) {
        room.bottom = std::min(room.bottom, paper.height - section.footerBottom - footerHeight);
    }
    room.bottom = std::max(room.bottom, room.top + least);
    return room;
}

PageArea borderedArea(const ResolvedSection& section, const word::SectionPaper& paper,
                      TextRoom room, HeldHeaders held) {
    return {static_cast<double>(paper.left), held.header ? section.headerTop : room.top,
            static_cast<double>(paper.width - paper.right),
            held.footer ? paper.height - section.footerBottom : room.bottom};
}

TextRoom centredOnGrid(TextRoom room, double linePitch) {
    const double height = room.bottom - room.top;
    if (linePitch > 0 && linePitch <= height) {
        const double lines = std::floor(height / linePitch) * linePitch;
        room.top += (height - lines) / 2;
        room.bottom = room.top + lines;
    }
    return room;
}

double spaceAboveText(ResolvedSection::TextPlace place, double roomLeft) {
    using Place = ResolvedSection::TextPlace;
    const double room = std::max(0.0, roomLeft);
    return place == Place::centre ? room / 2 : place == Place::bottom ? room : 0;
}

void addColumnLines(const ResolvedSection& section,
                    const std::vector<std::vector<FlowedStrip>>& columns, double left, double top,
                    Layer& layer) {
    constexpr double width = 10;
    const auto& shape = section.columns;
    if (!section.lineBetweenColumns) {
        return;
    }
    const double bottom = top + lowerEnd(columns);
    for (std::size_t i = 1; i < std::min(columns.size(), shape.size()); ++i) {
        if (!columns[i].empty()) {
            const double gapFrom = left + shape[i - 1].left + shape[i - 1].width;
            const double x = (gapFrom + left + shape[i].left) / 2;
            layer.rules.push_back({x, top, x, bottom, width, {}});
        }
    }
}

void addPageBorders(const PageBorders& borders, bool isFirstOfSection, const PageArea& text,
                    Page& page) {
    if (!standsOn(borders.pages, isFirstOfSection)) {
        return;
    }
    const PageArea edges = outerEdges(borders, text, page);
    using Order = StrokeOrder;
    const double upper = edges.top + firstWidth(borders.top, Order::fromOutside) / 2;
    const double left = edges.left + firstWidth(borders.left, Order::fromOutside) / 2;
    const double lower =
        edges.bottom - borders.bottom.thickness + firstWidth(borders.bottom, Order::fromInside) / 2;
    const double right =
        edges.right - borders.right.thickness + firstWidth(borders.right, Order::fromInside) / 2;
    addRule(page.layer, borders.top, {edges.left, upper}, {edges.right, upper}, Order::fromOutside);
    addRule(page.layer, borders.left, {left, edges.top}, {left, edges.bottom}, Order::fromOutside);
    addRule(page.layer, borders.bottom, {edges.left, lower}, {edges.right, lower},
            Order::fromInside);
    addRule(page.layer, borders.right, {right, edges.top}, {right, edges.bottom},
            Order::fromInside);
}

} // namespace qvnd::layout
