#include "platform/pictures/PictureDecoder.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

namespace qvnd::pictures {

namespace {

constexpr int dotsPerMetre = 3780; // 96 an inch, what counts for files that name no resolution

QImage firstFrame(word::ByteView file) {
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()),
                                               static_cast<qsizetype>(file.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    return reader.read();
}

} // namespace

std::optional<word::Bytes> PictureDecoder::convert(word::ByteView file) const {
    QImage image = firstFrame(file);
    if (image.isNull()) {
        return std::nullopt;
    }
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    QByteArray png;
    QBuffer buffer(&png);
    if (!image.save(&buffer, "PNG")) {
        return std::nullopt;
    }
    return word::Bytes(png.begin(), png.end());
}

} // namespace qvnd::pictures
