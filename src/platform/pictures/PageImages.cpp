#include "platform/pictures/PageImages.h"

#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/Picture.h"

#include <QImage>

#include <algorithm>
#include <cstring>

namespace qvnd::pictures {

namespace {

// A device-independent bitmap lacks the head of a BMP file: magic, size, where the pixels start.
word::Bytes asBitmapFile(word::ByteView dib) {
    constexpr std::size_t leastHead = 40;
    constexpr std::uint32_t fileHead = 14;
    if (dib.size() < leastHead) {
        return {};
    }
    word::LittleEndianReader reader(dib, "BITMAPINFOHEADER");
    const std::uint32_t head = reader.u32();
    reader.seek(14);
    const unsigned depth = reader.u16();
    const std::uint32_t compression = reader.u32();
    reader.seek(32);
    const std::uint32_t used = reader.u32();
    const std::uint32_t colours = used != 0 ? used : depth <= 8 ? 1U << depth : 0;
    const std::uint32_t masks = compression == 3 && head == leastHead ? 12 : 0;
    word::LittleEndianWriter file;
    file.u8('B');
    file.u8('M');
    file.u32(static_cast<std::uint32_t>(fileHead + dib.size()));
    file.u32(0);
    file.u32(fileHead + head + colours * 4 + masks);
    file.bytes(dib);
    return file.take();
}

QImage read(word::ByteView file) {
    return QImage::fromData(file.data(), static_cast<int>(file.size()));
}

QImage imageOf(const word::Picture& picture) {
    const auto stored = word::decodeBlip(picture.stored());
    if (!stored) {
        return {};
    }
    switch (stored->kind) {
    case word::ImageKind::png:
    case word::ImageKind::jpeg:
        return read(stored->data);
    case word::ImageKind::dib:
        return read(asBitmapFile(stored->data));
    default:
        return {};
    }
}

// A part between nothing and all but a little.
double cropOf(const word::Picture& picture, std::uint16_t opid) {
    constexpr double fixedOne = 65536;
    constexpr double most = 0.95;
    const auto value =
        picture.properties() ? picture.properties()->value(opid) : std::optional<std::uint32_t>();
    return value ? std::clamp(static_cast<std::int32_t>(*value) / fixedOne, 0.0, most) : 0;
}

QImage cropped(const QImage& image, const word::Picture& picture) {
    const int left = static_cast<int>(cropOf(picture, word::art::cropFromLeft) * image.width());
    const int top = static_cast<int>(cropOf(picture, word::art::cropFromTop) * image.height());
    const int right = static_cast<int>(cropOf(picture, word::art::cropFromRight) * image.width());
    const int bottom =
        static_cast<int>(cropOf(picture, word::art::cropFromBottom) * image.height());
    const bool none = left == 0 && top == 0 && right == 0 && bottom == 0;
    return none ? image
                : image.copy(left, top, std::max(1, image.width() - left - right),
                             std::max(1, image.height() - top - bottom));
}

} // namespace

std::optional<drawing::PixelImage> pageImage(const word::DataBlob& blob) {
    const auto picture = blob ? word::Picture::fromBlob(*blob) : std::nullopt;
    const QImage image = picture ? cropped(imageOf(*picture), *picture)
                                       .convertToFormat(QImage::Format_ARGB32_Premultiplied)
                                 : QImage();
    if (image.isNull()) {
        return std::nullopt;
    }
    drawing::PixelImage result{image.width(), image.height(), {}};
    const std::size_t row = static_cast<std::size_t>(image.width()) * 4;
    result.pixels.resize(row * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        std::memcpy(result.pixels.data() + static_cast<std::size_t>(y) * row,
                    image.constScanLine(y), row);
    }
    return result;
}

} // namespace qvnd::pictures
