#include "platform/preview/windows/PageColumn.h"

#include <algorithm>

namespace qvnd::preview {

namespace {

constexpr int margin = 12;         // around pages
constexpr double largestScale = 2; // pixels a point: a page one and a half times its true size

} // namespace

std::vector<QRect> PageColumn::placesFor(int width) const {
    std::vector<QRect> places;
    const double room = std::max(1, width - 2 * margin);
    int top = margin;
    for (const QSizeF& page : pages_) {
        const double fitting = room / std::max(1.0, page.width());
        const double first = room / std::max(1.0, pages_.front().width());
        const double scale = std::min({fitting, first, largestScale});
        const QSize size(qRound(page.width() * scale), qRound(page.height() * scale));
        places.emplace_back((width - size.width()) / 2, top, size.width(), size.height());
        top += size.height() + margin;
    }
    return places;
}

int PageColumn::heightFor(int width) const {
    const std::vector<QRect> places = placesFor(width);
    return places.empty() ? 0 : places.back().bottom() + 1 + margin;
}

} // namespace qvnd::preview
