#include "platform/drawing/metafile/EmfParts.h"

#include <algorithm>

namespace qvnd::drawing::metafile::emf {

namespace {

using word::LittleEndianReader;

bool isShort(Record type) { return type >= Record::polyBezier16 && type <= Record::polyDraw16; }

std::vector<VectorPoint> readPoints(Record type, std::size_t count, LittleEndianReader& reader) {
    std::vector<VectorPoint> points;
    for (std::size_t i = 0; i < count; ++i) {
        if (isShort(type)) {
            const double x = reader.i16();
            points.push_back({x, static_cast<double>(reader.i16())});
        } else {
            points.push_back(readPoint(reader));
        }
    }
    return points;
}

std::vector<VectorPoint> points(Record type, LittleEndianReader& reader) {
    reader.skip(boundsSize);
    const std::size_t count = reader.u32();
    return readPoints(type, count, reader);
}

void playAngleArc(LittleEndianReader& reader, DeviceContext& context) {
    const VectorPoint centre = readPoint(reader);
    const double radius = reader.u32();
    const double start = readReal(reader);
    context.angleArc(centre, radius, start, readReal(reader));
}

void playFigures(Record type, LittleEndianReader& reader, DeviceContext& context) {
    reader.skip(boundsSize);
    const std::size_t figures = reader.u32();
    const std::size_t all = reader.u32();
    if (figures > reader.remaining() / 4) {
        return;
    }
    std::vector<std::size_t> counts;
    for (std::size_t i = 0; i < figures; ++i) {
        counts.push_back(reader.u32());
    }
    const std::vector<VectorPoint> points = readPoints(type, all, reader);
    const bool areClosed = type == Record::polyPolygon || type == Record::polyPolygon16;
    std::vector<std::span<const VectorPoint>> parts;
    std::span<const VectorPoint> rest(points);
    for (const std::size_t count : counts) {
        parts.push_back(rest.first(std::min(count, rest.size())));
        rest = rest.subspan(parts.back().size());
    }
    if (areClosed) {
        context.polygons(parts);
        return;
    }
    for (const auto& part : parts) {
        context.polyline(part);
    }
}

} // namespace

bool playFigure(Record type, LittleEndianReader& reader, DeviceContext& context) {
    switch (type) {
    case Record::polyBezier:
    case Record::polyBezier16:
        context.bezier(points(type, reader));
        return true;
    case Record::polyBezierTo:
    case Record::polyBezierTo16:
        context.bezierTo(points(type, reader));
        return true;
    case Record::polyline:
    case Record::polyline16:
        context.polyline(points(type, reader));
        return true;
    case Record::polylineTo:
    case Record::polylineTo16:
        context.polylineTo(points(type, reader));
        return true;
    case Record::polygon:
    case Record::polygon16: {
        const auto figure = points(type, reader);
        context.polygons({figure});
        return true;
    }
    case Record::polyPolyline:
    case Record::polyPolyline16:
    case Record::polyPolygon:
    case Record::polyPolygon16:
        playFigures(type, reader, context);
        return true;
    case Record::polyDraw:
    case Record::polyDraw16: {
        const auto all = points(type, reader);
        context.polyDraw(all, reader.view(all.size()));
        return true;
    }
    case Record::angleArc:
        playAngleArc(reader, context);
        return true;
    default:
        return false;
    }
}

} // namespace qvnd::drawing::metafile::emf
