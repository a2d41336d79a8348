#include "platform/pictures/Picture.h"

#include "platform/drawing/VectorPainter.h"
#include "platform/drawing/metafile/Metafile.h"
#include "platform/word/docfile/pictures/ImageFile.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

namespace qvnd::pictures {

Picture Picture::fromData(const QByteArray& bytes) {
    const word::ByteView view(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                              static_cast<std::size_t>(bytes.size()));
    const auto known = word::recogniseImage(view);
    Picture picture;
    if (known && known->kind == word::ImageKind::wmf) {
        picture.drawing_ = drawing::readWmf(view);
    } else if (known && known->kind == word::ImageKind::emf) {
        picture.drawing_ = drawing::readEmf(view);
    } else {
        QByteArray copy = bytes;
        QBuffer buffer(&copy);
        picture.image_ = QImageReader(&buffer).read();
    }
    return picture;
}

Picture Picture::fromFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile) {
        return {};
    }
    return fromData(file.readAll());
}

QImage Picture::image(QSize pixels, drawing::FontFaces& fonts) const {
    if (isNull() || pixels.isEmpty()) {
        return {};
    }
    if (!drawing_) {
        return image_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    const drawing::PixelImage painted =
        drawing::imageOf(*drawing_, pixels.width(), pixels.height(), fonts);
    return QImage(painted.pixels.data(), painted.width, painted.height,
                  painted.width * qsizetype{4}, QImage::Format_ARGB32_Premultiplied)
        .copy();
}

} // namespace qvnd::pictures
