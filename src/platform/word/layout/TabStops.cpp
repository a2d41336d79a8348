#include "platform/word/layout/TabStops.h"

#include <algorithm>
#include <cmath>

namespace qvnd::layout {

using word::TabStop;

namespace {

double widthBehind(const SpacedItems& all, std::size_t tab, bool upToPoint) {
    double width = 0;
    for (std::size_t i = tab + 1; i < all.items.size(); ++i) {
        const TextItem& item = all.items[i];
        const bool ends = item.kind == TextItem::Kind::tab || endsLine(item) ||
                          (upToPoint && item.character == U'.');
        if (ends) {
            break;
        }
        width += item.width + all.gaps[i];
    }
    return width;
}

} // namespace

double behindTab(const SpacedItems& all, std::size_t tab) { return widthBehind(all, tab, false); }

double beforeStop(TabStop::Kind kind, const SpacedItems& all, std::size_t tab) {
    switch (kind) {
    case TabStop::Kind::right:
        return behindTab(all, tab);
    case TabStop::Kind::centre:
        return behindTab(all, tab) / 2;
    case TabStop::Kind::decimal:
        return widthBehind(all, tab, true);
    default:
        return 0;
    }
}

TabStop stopBehind(double at, const word::ResolvedParagraph& format,
                   const word::ParagraphIndents& indents, double defaultTab) {
    constexpr double rounding = 1; // twips
    const auto found =
        std::find_if(format.tabStops.begin(), format.tabStops.end(), [&](const TabStop& stop) {
            return stop.kind != TabStop::Kind::bar && stop.at > at + rounding;
        });
    const bool isFound = found != format.tabStops.end();
    const bool hangs = indents.firstLine < 0 && indents.left > at + rounding;
    if (hangs && (!isFound || found->at > indents.left)) {
        return {static_cast<int>(indents.left), TabStop::Kind::left, 0};
    }
    if (isFound) {
        return *found;
    }
    const double step = std::max(defaultTab, 1.0);
    return {static_cast<int>((std::floor((at + rounding) / step) + 1) * step), TabStop::Kind::left,
            0};
}

std::optional<PlacedText> leaderOf(const TextItem& tab, double x, double foot, FontMetrics& fonts,
                                   bool office) {
    if (tab.character == 0 || tab.width <= 0) {
        return std::nullopt;
    }
    const double exact = fonts.advance(tab.face, tab.character) * tab.size;
    const double one = office ? std::round(exact) : exact;
    const double room = office ? std::round(tab.width) : tab.width;
    const auto fitting = one > 0 ? static_cast<std::size_t>(room / one) : 0;
    const std::size_t count = fitting + (office && tab.character == U'_' ? 1 : 0);
    if (count == 0) {
        return std::nullopt;
    }
    const double step = office ? room / static_cast<double>(count) : one;
    PlacedText text;
    text.x = office ? x : x + tab.width - static_cast<double>(count) * step;
    text.baseline = foot;
    text.size = tab.size;
    text.face = tab.face;
    text.colour = tab.format->colour;
    text.text.assign(count, static_cast<char16_t>(tab.character));
    text.advances.assign(count, static_cast<float>(step));
    return text;
}

} // namespace qvnd::layout
