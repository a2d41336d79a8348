#pragma once

#include <QRect>
#include <QSizeF>

#include <vector>

namespace qvnd::preview {

// Places of pages one under the other, fitted to the width of the view: the first page decides the
// scale, and a wider page is scaled down to fit. In device-independent pixels.
class PageColumn {
public:
    // Of the pages, in points; at least one.
    explicit PageColumn(std::vector<QSizeF> pages = {}) : pages_(std::move(pages)) {}

    int heightFor(int width) const;
    // The places for a view of that width, from top to bottom.
    std::vector<QRect> placesFor(int width) const;

private:
    std::vector<QSizeF> pages_;
};

} // namespace qvnd::preview
