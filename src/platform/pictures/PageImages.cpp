#include "platform/pictures/PageImages.h"

#include "platform/pictures/PictureLight.h"
#include "platform/word/docfile/pictures/PictureFile.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <cstring>

namespace qvnd::pictures {

namespace {

constexpr double twipsPerInch = 1440;

// Reads all of the picture, `widest` pixels wide at most; 0 for as wide as it is.
QImage read(const word::Bytes& file, double widest) {
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()),
                                               static_cast<qsizetype>(file.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setAutoTransform(false);
    const QSize natural = reader.size();
    if (widest >= 1 && natural.isValid() && natural.width() > widest) {
        reader.setScaledSize(natural.scaled(qRound(widest), natural.height(), Qt::KeepAspectRatio)
                                 .expandedTo({1, 1}));
    }
    return reader.read();
}

QImage cropped(const QImage& image, const word::PictureCrop& crop) {
    if (crop == word::PictureCrop()) {
        return image;
    }
    const int left = static_cast<int>(crop.left * image.width());
    const int top = static_cast<int>(crop.top * image.height());
    const int right = static_cast<int>(crop.right * image.width());
    const int bottom = static_cast<int>(crop.bottom * image.height());
    return image.copy(left, top, std::max(1, image.width() - left - right),
                      std::max(1, image.height() - top - bottom));
}

drawing::PixelImage pixelsOf(const QImage& image) {
    drawing::PixelImage result{image.width(), image.height(), {}};
    const std::size_t row = static_cast<std::size_t>(image.width()) * 4;
    result.pixels.resize(row * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        std::memcpy(result.pixels.data() + static_cast<std::size_t>(y) * row,
                    image.constScanLine(y), row);
    }
    return result;
}

} // namespace

std::optional<drawing::PixelImage> pageImage(const word::DataBlob& blob) {
    return pageImageAt(blob, 0);
}

std::optional<drawing::PixelImage> pageImageAt(const word::DataBlob& blob, int dotsPerInch) {
    const auto picture = blob ? word::Picture::fromBlob(*blob) : std::nullopt;
    if (!picture) {
        return std::nullopt;
    }
    const word::PictureCrop crop = cropOf(*picture);
    const double seen = 1 - crop.left - crop.right;
    const double whole = seen > 0 ? picture->width() / seen : 0;
    const QImage shown =
        cropped(read(word::pictureFile(*picture), whole / twipsPerInch * dotsPerInch), crop);
    const QImage image = lit(shown, *picture).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return image.isNull() ? std::nullopt : std::optional(pixelsOf(image));
}

} // namespace qvnd::pictures
