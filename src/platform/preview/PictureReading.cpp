#include "platform/preview/PictureReading.h"

#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/Picture.h"

#include <algorithm>

namespace qvnd::preview {

namespace {

constexpr double twipsPerPoint = 20;

QByteArray bytesOf(word::ByteView view) {
    return {reinterpret_cast<const char*>(view.data()), static_cast<qsizetype>(view.size())};
}

// A device-independent bitmap lacks the head of a BMP file: magic, size, where the pixels start.
QByteArray asBitmapFile(word::ByteView dib) {
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
    return bytesOf(file.data());
}

QByteArray fileOf(const word::Picture& picture) {
    const auto image = word::decodeBlip(picture.stored());
    if (!image) {
        return {};
    }
    switch (image->kind) {
    case word::ImageKind::png:
    case word::ImageKind::jpeg:
        return bytesOf(image->data);
    case word::ImageKind::dib:
        return asBitmapFile(image->data);
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

} // namespace

std::optional<Picture> pictureOf(const word::DataBlob& blob) {
    const auto stored = blob ? word::Picture::fromBlob(*blob) : std::nullopt;
    if (!stored) {
        return std::nullopt;
    }
    Picture picture;
    picture.file = fileOf(*stored);
    picture.width = stored->width() / twipsPerPoint;
    picture.height = stored->height() / twipsPerPoint;
    picture.cropLeft = cropOf(*stored, word::art::cropFromLeft);
    picture.cropTop = cropOf(*stored, word::art::cropFromTop);
    picture.cropRight = cropOf(*stored, word::art::cropFromRight);
    picture.cropBottom = cropOf(*stored, word::art::cropFromBottom);
    return picture;
}

} // namespace qvnd::preview
