#pragma once

#include "platform/drawing/metafile/Calls.h"
#include "platform/word/docfile/container/Bytes.h"

#include <bit>

// The records of an EMF that are carried out besides those of Calls.h, and what many of them hold.
namespace qvnd::drawing::metafile::emf {

// RecordType, [MS-EMF] 2.1.1.
enum class Record : std::uint32_t {
    header = 1,
    polyBezier = 2,
    polygon = 3,
    polyline = 4,
    polyBezierTo = 5,
    polylineTo = 6,
    polyPolyline = 7,
    polyPolygon = 8,
    end = 14,
    setWorld = 35,
    modifyWorld = 36,
    selectObject = 37,
    createPen = 38,
    createBrush = 39,
    deleteObject = 40,
    angleArc = 41,
    polyDraw = 56,
    fillRegion = 71,
    paintRegion = 74,
    selectClipRegion = 75,
    bitBlock = 76,
    stretchBlock = 77,
    bitsToDevice = 80,
    stretchBits = 81,
    createFont = 82,
    textAnsi = 83,
    text = 84,
    polyBezier16 = 85,
    polygon16 = 86,
    polyline16 = 87,
    polyBezierTo16 = 88,
    polylineTo16 = 89,
    polyPolyline16 = 90,
    polyPolygon16 = 91,
    polyDraw16 = 92,
    createMonoBrush = 93,
    createPatternBrush = 94,
    createExtendedPen = 95,
    smallText = 108,
    alphaBlend = 114,
    transparentBlock = 116,
};

constexpr std::size_t boundsSize = 16; // that many records begin with

struct Rectangle {
    VectorPoint from;
    VectorPoint to;
};

inline VectorPoint readPoint(word::LittleEndianReader& reader) {
    const double x = reader.i32();
    return {x, static_cast<double>(reader.i32())};
}

inline Rectangle readRectangle(word::LittleEndianReader& reader) {
    const VectorPoint from = readPoint(reader);
    return {from, readPoint(reader)};
}

inline double readReal(word::LittleEndianReader& reader) {
    return std::bit_cast<float>(reader.u32());
}

inline PlaneMap readMap(word::LittleEndianReader& reader) {
    PlaneMap map;
    for (VectorPoint* part : {&map.right, &map.down, &map.origin}) {
        part->x = readReal(reader);
        part->y = readReal(reader);
    }
    return map;
}

} // namespace qvnd::drawing::metafile::emf
