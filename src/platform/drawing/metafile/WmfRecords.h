#pragma once

#include "platform/drawing/metafile/DeviceContext.h"
#include "platform/word/docfile/container/Bytes.h"

#include <set>

// The records of a WMF that are carried out, and what many of them hold.
namespace qvnd::drawing::metafile::wmf {

// RecordType, [MS-WMF] 2.1.1.1.
enum class Record : std::uint16_t {
    end = 0x0000,
    saveContext = 0x001E,
    createPalette = 0x00F7,
    setMapMode = 0x0103,
    setPolyFillMode = 0x0106,
    restoreContext = 0x0127,
    selectObject = 0x012D,
    setTextAlign = 0x012E,
    createDibPatternBrush = 0x0142,
    deleteObject = 0x01F0,
    createPatternBrush = 0x01F9,
    setBackground = 0x0201,
    setTextColour = 0x0209,
    setWindowOrigin = 0x020B,
    setWindowExtent = 0x020C,
    lineTo = 0x0213,
    moveTo = 0x0214,
    createPen = 0x02FA,
    createFont = 0x02FB,
    createBrush = 0x02FC,
    polygon = 0x0324,
    polyline = 0x0325,
    intersectClip = 0x0416,
    ellipse = 0x0418,
    rectangle = 0x041B,
    text = 0x0521,
    polyPolygon = 0x0538,
    roundRectangle = 0x061C,
    patternBlock = 0x061D,
    createRegion = 0x06FF,
    arc = 0x0817,
    pie = 0x081A,
    chord = 0x0830,
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

// Hands the records of a file to `take` until one of them ends it.
template <class Take>
void forEachRecord(word::ByteView file, const Take& take) {
    constexpr std::uint32_t placeable = 0x9AC6CDD7;
    constexpr std::size_t placeableSize = 22;
    constexpr std::size_t headSize = 18;
    word::LittleEndianReader reader(file, "WMF");
    const bool isPlaceable = reader.u32() == placeable;
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

// Objects in their table: a new one takes the first free place.
class ObjectTable {
public:
    void add(const GraphicsObject& object) {
        if (!free_.empty()) {
            objects_[*free_.begin()] = object;
            free_.erase(free_.begin());
        } else {
            objects_.push_back(object);
        }
    }
    void remove(std::size_t index) {
        if (index < objects_.size()) {
            objects_[index] = OtherObject();
            free_.insert(index);
        }
    }
    const GraphicsObject* find(std::size_t index) const {
        return index < objects_.size() ? &objects_[index] : nullptr;
    }

private:
    std::vector<GraphicsObject> objects_;
    std::set<std::size_t> free_;
};

} // namespace qvnd::drawing::metafile::wmf
