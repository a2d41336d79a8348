#pragma once

#include <QRectF>
#include <QSizeF>

class QPainter;

namespace qvnd::preview {

// Pages of a document, ready to be drawn.
class PageSource {
public:
    virtual ~PageSource() = default;

    // At least 1.
    virtual int count() const = 0;
    // In points.
    virtual QSizeF size(int page) const = 0;
    // Draws the page over its whole area `target` (device-independent pixels); only `exposed` of
    // it need be drawn. The paper is white already. May leave the page white and have it drawn
    // again later.
    virtual void paint(QPainter& painter, int page, const QRectF& target,
                       const QRectF& exposed) = 0;
};

} // namespace qvnd::preview
