#pragma once

#include "platform/drawing/metafile/Calls.h"
#include "platform/word/docfile/container/Bytes.h"

// The records of a WMF that are carried out besides those of Calls.h, and what many of them hold.
namespace qvnd::drawing::metafile::wmf {

// RecordType, [MS-WMF] 2.1.1.1.
enum class Record : std::uint16_t {
    end = 0x0000,
    createPalette = 0x00F7,
    paintRegion = 0x012B,
    selectClipRegion = 0x012C,
    selectObject = 0x012D,
    createDibPatternBrush = 0x0142,
    deleteObject = 0x01F0,
    createPatternBrush = 0x01F9,
    fillRegion = 0x0228,
    createPen = 0x02FA,
    createFont = 0x02FB,
    createBrush = 0x02FC,
    polygon = 0x0324,
    polyline = 0x0325,
    text = 0x0521,
    polyPolygon = 0x0538,
    patternBlock = 0x061D,
    createRegion = 0x06FF,
    dibBitBlock = 0x0940,
    extendedText = 0x0A32,
    dibStretchBlock = 0x0B41,
    bitsToDevice = 0x0D33,
    stretchBits = 0x0F43,
};

// Points stand with the last number first where they are arguments of a call.
inline VectorPoint readTurned(word::LittleEndianReader& reader) {
    const double y = reader.i16();
    return {static_cast<double>(reader.i16()), y};
}

inline VectorPoint readPoint(word::LittleEndianReader& reader) {
    const double x = reader.i16();
    return {x, static_cast<double>(reader.i16())};
}

constexpr std::uint32_t placeableKey = 0x9AC6CDD7;

// The bounds that a placeable header tells in logical units; nothing without one, or where they
// hold no area.
struct Bounds {
    VectorPoint origin;
    VectorPoint extent;
};
inline std::optional<Bounds> placeableBounds(word::ByteView file) {
    word::LittleEndianReader reader(file, "WMF");
    if (reader.u32() != placeableKey) {
        return std::nullopt;
    }
    reader.skip(2);
    const VectorPoint from = readPoint(reader);
    const VectorPoint to = readPoint(reader);
    const Bounds bounds{from, {to.x - from.x, to.y - from.y}};
    return bounds.extent.x != 0 && bounds.extent.y != 0 ? std::optional(bounds) : std::nullopt;
}

// Hands the records of a file to `take` until one of them ends it.
template <class Take>
void forEachRecord(word::ByteView file, const Take& take) {
    constexpr std::size_t placeableSize = 22;
    constexpr std::size_t headSize = 18;
    word::LittleEndianReader reader(file, "WMF");
    const bool isPlaceable = reader.u32() == placeableKey;
    reader.seek((isPlaceable ? placeableSize : 0) + headSize);
    while (reader.remaining() >= 6) {
        const std::size_t begin = reader.position();
        const std::uint32_t words = reader.u32();
        const auto type = Record{reader.u16()};
        reader.seek(begin);
        if (words < 3 || words > reader.remaining() / 2 || type == Record::end) {
            return;
        }
        take(type, reader.view(words * 2));
    }
}

} // namespace qvnd::drawing::metafile::wmf
