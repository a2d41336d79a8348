#include "platform/word/docfile/pictures/PictureFile.h"

#include "platform/word/docfile/pictures/Blip.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// A device-independent bitmap lacks the head of a BMP file: magic, size, where the pixels start.
Bytes asBitmapFile(ByteView dib) {
    constexpr std::size_t leastHead = 40;
    constexpr std::uint32_t fileHead = 14;
    if (dib.size() < leastHead) {
        return {};
    }
    LittleEndianReader reader(dib, "BITMAPINFOHEADER");
    const std::uint32_t head = reader.u32();
    reader.seek(14);
    const unsigned depth = reader.u16();
    const std::uint32_t compression = reader.u32();
    reader.seek(32);
    const std::uint32_t used = reader.u32();
    const std::uint32_t colours = used != 0 ? used : depth <= 8 ? 1U << depth : 0;
    const std::uint32_t masks = compression == 3 && head == leastHead ? 12 : 0;
    LittleEndianWriter file;
    file.u8('B');
    file.u8('M');
    file.u32(static_cast<std::uint32_t>(fileHead + dib.size()));
    file.u32(0);
    file.u32(fileHead + head + colours * 4 + masks);
    file.bytes(dib);
    return file.take();
}

double cutOff(const Picture& picture, std::uint16_t opid) {
    constexpr double fixedOne = 65536;
    constexpr double most = 0.95;
    const auto value =
        picture.properties() ? picture.properties()->value(opid) : std::optional<std::uint32_t>();
    return value ? std::clamp(static_cast<std::int32_t>(*value) / fixedOne, 0.0, most) : 0;
}

} // namespace

Bytes pictureFile(const Picture& picture) {
    const auto stored = decodeBlip(picture.stored());
    if (!stored) {
        return {};
    }
    switch (stored->kind) {
    case ImageKind::png:
    case ImageKind::jpeg:
        return {stored->data.begin(), stored->data.end()};
    case ImageKind::dib:
        return asBitmapFile(stored->data);
    default:
        return {};
    }
}

PictureCrop cropOf(const Picture& picture) {
    return {cutOff(picture, art::cropFromLeft), cutOff(picture, art::cropFromTop),
            cutOff(picture, art::cropFromRight), cutOff(picture, art::cropFromBottom)};
}

} // namespace qvnd::word
