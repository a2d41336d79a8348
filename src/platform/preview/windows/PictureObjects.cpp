#include "platform/preview/windows/PictureObjects.h"

#include <QPainter>
#include <QTextDocument>

#include <algorithm>

namespace qvnd::preview {

namespace {

constexpr int pictureProperty = QTextFormat::UserProperty + 1;
constexpr int sizeProperty = QTextFormat::UserProperty + 2;
constexpr int largestLabel = 48; // units of the text

} // namespace

QTextCharFormat PictureObjects::place(std::size_t picture, QSizeF size) {
    QTextCharFormat format;
    format.setObjectType(objectType);
    format.setProperty(pictureProperty, QVariant::fromValue(static_cast<qulonglong>(picture)));
    format.setProperty(sizeProperty, size);
    return format;
}

QSizeF PictureObjects::intrinsicSize(QTextDocument* /*document*/, int /*position*/,
                                     const QTextFormat& format) {
    return format.property(sizeProperty).toSizeF();
}

void PictureObjects::drawObject(QPainter* painter, const QRectF& area, QTextDocument* /*document*/,
                                int /*position*/, const QTextFormat& format) {
    const auto found = images_.find(format.property(pictureProperty).toULongLong());
    if (found == images_.end()) {
        painter->fillRect(area, QColor(0xF0, 0xF0, 0xF0));
        painter->setPen(QPen(QColor(0xD0, 0xD0, 0xD0), 0));
        painter->drawRect(area);
        QFont font = painter->font();
        font.setPixelSize(std::clamp(qRound(area.height() / 4), 1, largestLabel));
        painter->setFont(font);
        painter->setPen(QColor(0x90, 0x90, 0x90));
        painter->drawText(area, Qt::AlignCenter, QStringLiteral("图片"));
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(area, found->second);
    painter->restore();
}

} // namespace qvnd::preview
