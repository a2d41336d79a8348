#include "platform/drawing/windows/MetafileObjects.h"

#include <cmath>
#include <numbers>

namespace qvnd::drawing {

QColor colorOf(std::uint32_t colorRef) {
    return QColor(static_cast<int>(colorRef & 0xFF), static_cast<int>((colorRef >> 8) & 0xFF),
                  static_cast<int>((colorRef >> 16) & 0xFF));
}

QBrush brushOf(unsigned style, std::uint32_t colorRef, unsigned hatch) {
    constexpr unsigned none = 1;
    constexpr unsigned hatched = 2;
    constexpr Qt::BrushStyle hatches[] = {Qt::HorPattern,   Qt::VerPattern,   Qt::FDiagPattern,
                                          Qt::BDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};
    if (style == none) {
        return Qt::NoBrush;
    }
    return {colorOf(colorRef),
            style == hatched && hatch < std::size(hatches) ? hatches[hatch] : Qt::SolidPattern};
}

LogicalPen penOf(unsigned style, double width, std::uint32_t colorRef) {
    constexpr Qt::PenStyle styles[] = {Qt::SolidLine,   Qt::DashLine,       Qt::DotLine,
                                       Qt::DashDotLine, Qt::DashDotDotLine, Qt::NoPen,
                                       Qt::SolidLine};
    const unsigned kind = style & 0xF;
    return {kind < std::size(styles) ? styles[kind] : Qt::SolidLine, std::abs(width),
            colorOf(colorRef)};
}

namespace {

// In degrees, counter-clockwise on a page whose y goes down.
double angleOf(const QRectF& box, QPointF place) {
    const QPointF from = place - box.center();
    const double x = box.width() == 0 ? from.x() : from.x() / box.width();
    const double y = box.height() == 0 ? from.y() : from.y() / box.height();
    return std::atan2(-y, x) * 180 / std::numbers::pi;
}

} // namespace

void readFontStyle(word::LittleEndianReader& in, int weight, LogicalFont& font) {
    if (weight > 0) {
        font.weight = weight;
    }
    font.italic = in.u8() != 0;
    font.underline = in.u8() != 0;
    font.strikeOut = in.u8() != 0;
    font.charset = in.u8();
    in.skip(4); // precision, clipping, quality, pitch
}

QPainterPath arcOf(const QRectF& box, QPointF start, QPointF end, ArcKind kind) {
    const double from = angleOf(box, start);
    double sweep = angleOf(box, end) - from;
    if (sweep <= 0) {
        sweep += 360;
    }
    QPainterPath path;
    if (kind == ArcKind::pie) {
        path.moveTo(box.center());
    } else {
        path.arcMoveTo(box, from);
    }
    path.arcTo(box, from, sweep);
    if (kind != ArcKind::open) {
        path.closeSubpath();
    }
    return path;
}

QPainterPath polyline(const std::vector<QPointF>& points, bool isClosed) {
    QPainterPath path;
    for (std::size_t i = 0; i < points.size(); ++i) {
        i == 0 ? path.moveTo(points[i]) : path.lineTo(points[i]);
    }
    if (isClosed) {
        path.closeSubpath();
    }
    return path;
}

void ObjectTable::add(LogicalObject object) {
    std::size_t number = 0;
    while (objects_.contains(number)) {
        ++number;
    }
    put(number, std::move(object));
}

void ObjectTable::put(std::size_t number, LogicalObject object) {
    if (number < mostObjects) {
        objects_[number] = std::move(object);
    }
}

const LogicalObject& ObjectTable::at(std::size_t number) const {
    static const LogicalObject none;
    const auto found = objects_.find(number);
    return found == objects_.end() ? none : found->second;
}

} // namespace qvnd::drawing
