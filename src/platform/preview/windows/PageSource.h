#pragma once

#include <QObject>
#include <QRectF>
#include <QSizeF>

class QPainter;

namespace qvnd::preview {

// Of an image of a page, each way.
inline constexpr int mostPixels = 6000;

// Pages of a document, drawn in the thread of the windows from images that another one paints.
class PageSource : public QObject {
    Q_OBJECT

public:
    virtual int count() const = 0;
    // In points.
    virtual QSizeF size(int page) const = 0;
    // Draws the page over its whole area `target` (device-independent pixels). The paper is white
    // already. May leave the page white, or draw it from an image of another size, and tell by
    // drawn() when it has the right one.
    virtual void paint(QPainter& painter, int page, const QRectF& target) = 0;

signals:
    // The page has an image now, or a better one.
    void drawn(int page);
};

} // namespace qvnd::preview
