#include "platform/preview/windows/ReadingPages.h"

#include "platform/preview/windows/PictureObjects.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>

#include <algorithm>

namespace qvnd::preview {

ReadingPages::ReadingPages(const DocumentReading& reading, const QString& lastLine)
    : text_(readingText(reading, lastLine)), paper_(reading.paper.width, reading.paper.height),
      count_(std::max(1, text_.document->pageCount())) {}

void ReadingPages::setImage(std::size_t picture, const QImage& image) {
    text_.pictures->setImage(picture, image);
}

QSizeF ReadingPages::size(int /*page*/) const { return paper_; }

void ReadingPages::paint(QPainter& painter, int page, const QRectF& target, const QRectF& exposed) {
    const QSizeF paper = text_.document->pageSize();
    const double scale = target.width() / paper.width();
    const double top = page * paper.height();
    painter.save();
    painter.setClipRect(target & exposed, Qt::IntersectClip);
    painter.translate(target.topLeft());
    painter.scale(scale, scale);
    painter.translate(0, -top);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    const QRectF shown((exposed.topLeft() - target.topLeft()) / scale + QPointF(0, top),
                       exposed.size() / scale);
    context.clip = shown & QRectF(QPointF(0, top), paper);
    text_.document->documentLayout()->draw(&painter, context);
    painter.restore();
}

} // namespace qvnd::preview
