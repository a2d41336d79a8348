#pragma once

#include "platform/drawing/windows/DeviceContext.h"
#include "platform/word/docfile/container/Bytes.h"

#include <map>

namespace qvnd::drawing {

// What WMF and EMF records share: kinds of objects by their numbers, and shapes on an ellipse.

QColor colorOf(std::uint32_t colorRef);
// BrushStyle and HatchStyle ([MS-WMF] 2.1.1.4, 2.1.1.12).
QBrush brushOf(unsigned style, std::uint32_t colorRef, unsigned hatch);
// PenStyle ([MS-WMF] 2.1.1.23); the bits above the style are ends and joins, which are round here.
LogicalPen penOf(unsigned style, double width, std::uint32_t colorRef);

// The part of a font's record between its weight and its face ([MS-WMF] 2.2.1.2, [MS-EMF] 2.2.13);
// a weight that is not above 0 leaves the font's own.
void readFontStyle(word::LittleEndianReader& in, int weight, LogicalFont& font);

enum class ArcKind { open, chord, pie };
// The arc of the ellipse in `box`, counter-clockwise from the ray to `start` to the ray to `end`.
QPainterPath arcOf(const QRectF& box, QPointF start, QPointF end, ArcKind kind);
// Lines through points; closed, the last goes back to the first.
QPainterPath polyline(const std::vector<QPointF>& points, bool isClosed);

// The objects that records make, by their numbers. A number out of range, and one without an
// object, is left alone: damaged files name such.
class ObjectTable {
public:
    static constexpr std::size_t mostObjects = 65'536;

    // In the first free place, as a WMF counts.
    void add(LogicalObject object);
    void put(std::size_t number, LogicalObject object);
    void remove(std::size_t number) { objects_.erase(number); }
    // Nothing in it for a number without an object.
    const LogicalObject& at(std::size_t number) const;

private:
    std::map<std::size_t, LogicalObject> objects_;
};

} // namespace qvnd::drawing
