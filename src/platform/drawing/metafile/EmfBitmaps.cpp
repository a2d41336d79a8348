#include "platform/drawing/metafile/EmfParts.h"

#include <cmath>

namespace qvnd::drawing::metafile::emf {

namespace {

using word::ByteView;
using word::LittleEndianReader;

struct BitmapSource {
    ByteView head;
    ByteView pixels;
};

BitmapSource readSource(ByteView bytes, LittleEndianReader& reader) {
    const auto part = [&] {
        const std::size_t at = reader.u32();
        const std::size_t size = reader.u32();
        LittleEndianReader from(bytes, "EMF bitmap");
        from.seek(at);
        return from.view(size);
    };
    BitmapSource source;
    source.head = part();
    source.pixels = part();
    return source;
}

BitmapPart readPart(LittleEndianReader& reader) {
    BitmapPart part;
    for (int* value : {&part.x, &part.y, &part.width, &part.height}) {
        *value = reader.i32();
    }
    return part;
}

// StretchDIBits and SetDIBitsToDevice: the one tells at its end how large the part comes to be.
void playBits(Record type, ByteView bytes, LittleEndianReader& reader, BitmapRecords& bitmaps) {
    reader.skip(boundsSize);
    BitmapPlace place;
    place.partFromBelow = true;
    place.to = readPoint(reader);
    place.part = readPart(reader);
    place.extent = {static_cast<double>(place.part.width), static_cast<double>(place.part.height)};
    const BitmapSource source = readSource(bytes, reader);
    if (type == Record::stretchBits) {
        reader.skip(4); // what its colours mean
        place.operation = reader.u32();
        place.extent = readPoint(reader);
    }
    bitmaps.draw(place, source.head, source.pixels);
}

void playBlock(Record type, ByteView bytes, LittleEndianReader& reader, BitmapRecords& bitmaps) {
    constexpr std::uint32_t usesOpacity = 0x01000000; // of BLENDFUNCTION
    constexpr std::size_t mapSize = 24;
    reader.skip(boundsSize);
    BitmapPlace place;
    place.to = readPoint(reader);
    place.extent = readPoint(reader);
    const std::uint32_t operation = reader.u32();
    place.part.x = reader.i32();
    place.part.y = reader.i32();
    reader.skip(mapSize + 8); // the source's map, its background, what its colours mean
    const BitmapSource source = readSource(bytes, reader);
    if (type == Record::bitBlock) {
        place.part.width = static_cast<int>(std::abs(place.extent.x));
        place.part.height = static_cast<int>(std::abs(place.extent.y));
    } else {
        place.part.width = reader.i32();
        place.part.height = reader.i32();
    }
    if (type == Record::alphaBlend) {
        place.hasOpacity = (operation & usesOpacity) != 0;
        place.opacity = ((operation >> 16) & 0xFF) / 255.0;
    }
    const bool isCopied = type == Record::alphaBlend || type == Record::transparentBlock;
    place.operation = isCopied ? BitmapPlace::sourceCopy : operation;
    bitmaps.draw(place, source.head, source.pixels);
}

} // namespace

bool playBitmap(Record type, ByteView bytes, LittleEndianReader& reader, BitmapRecords& bitmaps) {
    switch (type) {
    case Record::stretchBits:
    case Record::bitsToDevice:
        playBits(type, bytes, reader, bitmaps);
        return true;
    case Record::bitBlock:
    case Record::stretchBlock:
    case Record::alphaBlend:
    case Record::transparentBlock:
        playBlock(type, bytes, reader, bitmaps);
        return true;
    default:
        return false;
    }
}

std::optional<PixelImage> readPattern(ByteView bytes, LittleEndianReader& reader,
                                      BitmapRecords& bitmaps) {
    reader.skip(4); // what its colours mean
    const BitmapSource source = readSource(bytes, reader);
    return bitmaps.whole(source.head, source.pixels);
}

} // namespace qvnd::drawing::metafile::emf
