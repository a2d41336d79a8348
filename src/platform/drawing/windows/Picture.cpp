#include "platform/drawing/windows/Picture.h"

#include "platform/drawing/windows/EmfPlayer.h"
#include "platform/drawing/windows/WmfPlayer.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/pictures/ImageFile.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QPainter>

namespace qvnd::drawing {

namespace {

constexpr double twipsPerPoint = 20;

word::ByteView viewOf(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

// A gif is not among the kinds that a document keeps as they are, so Qt tells its size.
QSizeF pixelsInPoints(const QImage& image) {
    constexpr double pointsPerInch = 72;
    constexpr double plainResolution = 96;
    return QSizeF(image.size()) * pointsPerInch / plainResolution;
}

} // namespace

Picture Picture::fromData(const QByteArray& bytes) {
    Picture picture;
    const auto known = word::recogniseImage(viewOf(bytes));
    if (known && (known->kind == word::ImageKind::wmf || known->kind == word::ImageKind::emf)) {
        picture.kind_ = known->kind == word::ImageKind::wmf ? Kind::wmf : Kind::emf;
        picture.metafile_ = bytes;
    } else {
        QByteArray copy = bytes;
        QBuffer buffer(&copy);
        picture.image_ = QImageReader(&buffer).read();
        if (picture.isNull()) {
            return {};
        }
    }
    picture.size_ = known ? QSizeF(known->width, known->height) / twipsPerPoint
                          : pixelsInPoints(picture.image_);
    return picture;
}

Picture Picture::fromFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile) {
        return {};
    }
    return fromData(file.readAll());
}

void Picture::draw(QPainter& painter, const QRectF& target) const {
    if (isNull() || target.isEmpty()) {
        return;
    }
    if (kind_ == Kind::image) {
        painter.save();
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, image_);
        painter.restore();
        return;
    }
    try {
        if (kind_ == Kind::wmf) {
            WmfPlayer(viewOf(metafile_), painter, target).play();
        } else {
            EmfPlayer(viewOf(metafile_), painter, target).play();
        }
    } catch (const word::FormatError&) {
        return; // shorter than its header: nothing to draw
    }
}

} // namespace qvnd::drawing
