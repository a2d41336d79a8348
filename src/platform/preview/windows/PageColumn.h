#pragma once

#include <QRect>
#include <QSizeF>

#include <vector>

namespace qvnd::preview {

// Pages one under the other on a desk, fitted to its width: the first page decides the scale, a
// wider one is made to fit. In device-independent pixels.
class PageColumn {
public:
    // Of the pages, in points; at least one.
    explicit PageColumn(std::vector<QSizeF> pages = {}) : pages_(std::move(pages)) {}

    int heightFor(int width) const;
    // Places for a desk of that width, from top to bottom.
    std::vector<QRect> placesFor(int width) const;

private:
    std::vector<QSizeF> pages_;
};

} // namespace qvnd::preview
