#include "platform/word/layout/ShapeOutlines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace qvnd::layout {

namespace {

// Kinds, MSOSPT.
enum Kind : unsigned {
    roundRectangle = 2,
    ellipse = 3,
    diamond = 4,
    triangle = 5,
    rightTriangle = 6,
    parallelogram = 7,
    trapezoid = 8,
    hexagon = 9,
    octagon = 10,
    plus = 11,
    star = 12,
    rightArrow = 13,
    homePlate = 15,
    arc = 19,
    line = 20,
    straightConnector = 32,
    bentConnector2 = 33,
    bentConnector3 = 34,
    curvedConnector3 = 38,
    chevron = 55,
    leftArrow = 66,
    downArrow = 67,
    upArrow = 68,
    bothArrow = 69,
    upDownArrow = 70,
    leftBracket = 85,
    rightBracket = 86,
    leftBrace = 87,
    rightBrace = 88,
    decision = 110,
    inputOutput = 111,
    document = 114,
    terminator = 116,
    preparation = 117,
    manualInput = 118,
    manualOperation = 119,
    connector = 120,
    firstTextArt = 136,
    lastTextArt = 175,
    alternateProcess = 176,
};

using Points = std::vector<PathPoint>;

// Corners in parts of the area.
Points cornersOf(unsigned kind) {
    switch (kind) {
    case diamond:
    case decision:
        return {{0.5, 0}, {1, 0.5}, {0.5, 1}, {0, 0.5}};
    case triangle:
        return {{0.5, 0}, {1, 1}, {0, 1}};
    case rightTriangle:
        return {{0, 0}, {1, 1}, {0, 1}};
    case parallelogram:
        return {{0.25, 0}, {1, 0}, {0.75, 1}, {0, 1}};
    case inputOutput:
        return {{0.2, 0}, {1, 0}, {0.8, 1}, {0, 1}};
    case trapezoid:
        return {{0, 0}, {1, 0}, {0.75, 1}, {0.25, 1}};
    case manualInput:
        return {{0, 0.2}, {1, 0}, {1, 1}, {0, 1}};
    case manualOperation:
        return {{0, 0}, {1, 0}, {0.8, 1}, {0.2, 1}};
    case hexagon:
        return {{0.25, 0}, {0.75, 0}, {1, 0.5}, {0.75, 1}, {0.25, 1}, {0, 0.5}};
    case preparation:
        return {{0.2, 0}, {0.8, 0}, {1, 0.5}, {0.8, 1}, {0.2, 1}, {0, 0.5}};
    case octagon:
        return {{0.29, 0}, {0.71, 0}, {1, 0.29}, {1, 0.71},
                {0.71, 1}, {0.29, 1}, {0, 0.71}, {0, 0.29}};
    case plus:
        return {{0.25, 0}, {0.75, 0}, {0.75, 0.25}, {1, 0.25}, {1, 0.75}, {0.75, 0.75},
                {0.75, 1}, {0.25, 1}, {0.25, 0.75}, {0, 0.75}, {0, 0.25}, {0.25, 0.25}};
    case star:
        return {{0.5, 0},     {0.618, 0.382}, {1, 0.382},     {0.691, 0.618}, {0.809, 1},
                {0.5, 0.764}, {0.191, 1},     {0.309, 0.618}, {0, 0.382},     {0.382, 0.382}};
    case rightArrow:
        return {{0, 0.25}, {0.75, 0.25}, {0.75, 0}, {1, 0.5}, {0.75, 1}, {0.75, 0.75}, {0, 0.75}};
    case leftArrow:
        return {{1, 0.25}, {0.25, 0.25}, {0.25, 0}, {0, 0.5}, {0.25, 1}, {0.25, 0.75}, {1, 0.75}};
    case downArrow:
        return {{0.25, 0}, {0.25, 0.75}, {0, 0.75}, {0.5, 1}, {1, 0.75}, {0.75, 0.75}, {0.75, 0}};
    case upArrow:
        return {{0.25, 1}, {0.25, 0.25}, {0, 0.25}, {0.5, 0}, {1, 0.25}, {0.75, 0.25}, {0.75, 1}};
    case bothArrow:
        return {{0, 0.5}, {0.2, 0}, {0.2, 0.25}, {0.8, 0.25}, {0.8, 0},
                {1, 0.5}, {0.8, 1}, {0.8, 0.75}, {0.2, 0.75}, {0.2, 1}};
    case upDownArrow:
        return {{0.5, 0}, {1, 0.2}, {0.75, 0.2}, {0.75, 0.8}, {1, 0.8},
                {0.5, 1}, {0, 0.8}, {0.25, 0.8}, {0.25, 0.2}, {0, 0.2}};
    case homePlate:
        return {{0, 0}, {0.75, 0}, {1, 0.5}, {0.75, 1}, {0, 1}};
    case chevron:
        return {{0, 0}, {0.75, 0}, {1, 0.5}, {0.75, 1}, {0, 1}, {0.25, 0.5}};
    case line:
    case straightConnector:
        return {{0, 0}, {1, 1}};
    case bentConnector2:
        return {{0, 0}, {1, 0}, {1, 1}};
    case bentConnector3:
        return {{0, 0}, {0.5, 0}, {0.5, 1}, {1, 1}};
    case leftBracket:
        return {{1, 0}, {0, 0}, {0, 1}, {1, 1}};
    case rightBracket:
        return {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    default:
        return {};
    }
}

// Corners rounded by quarters of ellipses, in parts of the area.
Path rounded(double rx, double ry) {
    constexpr double pull = 0.4477; // what a curve's inner points leave to the corner
    const double kx = rx * pull;
    const double ky = ry * pull;
    Path path;
    path.moveTo({rx, 0});
    path.lineTo({1 - rx, 0});
    path.curveTo({1 - kx, 0}, {1, ky}, {1, ry});
    path.lineTo({1, 1 - ry});
    path.curveTo({1, 1 - ky}, {1 - kx, 1}, {1 - rx, 1});
    path.lineTo({rx, 1});
    path.curveTo({kx, 1}, {0, 1 - ky}, {0, 1 - ry});
    path.lineTo({0, ry});
    path.curveTo({0, ky}, {kx, 0}, {rx, 0});
    path.close();
    return path;
}

// A quarter of an ellipse that leaves the last point of the path across or down.
void quarterTo(Path& path, PathPoint end, bool leavesAcross) {
    constexpr double reach = 0.5523; // of a curve's inner points
    const PathPoint from = path.points.back();
    const double x = (end.x - from.x) * reach;
    const double y = (end.y - from.y) * reach;
    if (leavesAcross) {
        path.curveTo({from.x + x, from.y}, {end.x, end.y - y}, end);
    } else {
        path.curveTo({from.x, from.y + y}, {end.x - x, end.y}, end);
    }
}

// Its point at the left.
Path braceOutline() {
    constexpr double bend = 1.0 / 12; // the height of each of its four curves
    Path path;
    path.moveTo({1, 0});
    quarterTo(path, {0.5, bend}, true);
    path.lineTo({0.5, 0.5 - bend});
    quarterTo(path, {0, 0.5}, false);
    quarterTo(path, {0.5, 0.5 + bend}, true);
    path.lineTo({0.5, 1 - bend});
    quarterTo(path, {1, 1}, false);
    return path;
}

Path mirroredAcross(Path path) {
    for (PathPoint& point : path.points) {
        point.x = 1 - point.x;
    }
    return path;
}

Path curvedOutline(unsigned kind, double width, double height) {
    const double shorter = std::max(1.0, std::min(std::abs(width), std::abs(height)));
    const auto corner = [&](double part) {
        return rounded(part * shorter / std::max(1.0, std::abs(width)),
                       part * shorter / std::max(1.0, std::abs(height)));
    };
    Path path;
    switch (kind) {
    case ellipse:
    case connector:
        return rounded(0.5, 0.5);
    case roundRectangle:
    case alternateProcess:
        return corner(1.0 / 6);
    case terminator:
        return corner(0.5);
    case document:
        path.moveTo({0, 0});
        path.lineTo({1, 0});
        path.lineTo({1, 0.8});
        path.curveTo({0.5, 0.8}, {0.5, 1.2}, {0, 0.95});
        path.close();
        return path;
    case arc:
        path.moveTo({0, 0});
        path.curveTo({0.5523, 0}, {1, 0.4477}, {1, 1});
        return path;
    case leftBrace:
        return braceOutline();
    case rightBrace:
        return mirroredAcross(braceOutline());
    case curvedConnector3:
        path.moveTo({0, 0});
        path.curveTo({0.25, 0}, {0.5, 0.25}, {0.5, 0.5});
        path.curveTo({0.5, 0.75}, {0.75, 1}, {1, 1});
        return path;
    default:
        return path;
    }
}

// From parts of the area to the page.
Path placed(Path path, const PageArea& told, const ShapeTurn& turn) {
    const PageArea area = uprightArea(told, turn.angle);
    const double width = area.right - area.left;
    const double height = area.bottom - area.top;
    const double sin = std::sin(turn.angle);
    const double cos = std::cos(turn.angle);
    for (PathPoint& point : path.points) {
        const double x = ((turn.flippedAcross ? 1 - point.x : point.x) - 0.5) * width;
        const double y = ((turn.flippedDown ? 1 - point.y : point.y) - 0.5) * height;
        point = {area.left + width / 2 + x * cos - y * sin,
                 area.top + height / 2 + x * sin + y * cos};
    }
    return path;
}

// IMsoArray, [MS-ODRAW] 2.2.51: how many elements of which size.
struct ArrayHead {
    std::size_t count = 0;
    unsigned elementSize = 0;
};

ArrayHead readHead(word::LittleEndianReader& reader) {
    constexpr std::size_t headSize = 6;
    ArrayHead head;
    if (reader.remaining() < headSize) {
        return head;
    }
    head.count = reader.u16();
    reader.skip(2);
    head.elementSize = reader.u16();
    return head;
}

Points verticesOf(const ShapeGeometry& geometry) {
    constexpr unsigned truncated = 0xFFF0; // two numbers of two bytes
    Points points;
    if (geometry.vertices.empty()) {
        return points;
    }
    word::LittleEndianReader reader(geometry.vertices, "pVertices");
    const ArrayHead head = readHead(reader);
    const double width = geometry.room.right - geometry.room.left;
    const double height = geometry.room.bottom - geometry.room.top;
    const bool isShort = head.elementSize == truncated;
    const std::size_t each = isShort ? 4 : 8;
    for (std::size_t i = 0; i < head.count && reader.remaining() >= each; ++i) {
        const double x = isShort ? reader.i16() : reader.i32();
        const double y = isShort ? reader.i16() : reader.i32();
        points.push_back({width != 0 ? (x - geometry.room.left) / width : 0,
                          height != 0 ? (y - geometry.room.top) / height : 0});
    }
    return points;
}

Path closedThrough(const Points& points) {
    Path path;
    for (const PathPoint& point : points) {
        path.lineTo(point);
    }
    path.close();
    return path;
}

// MSOPATHINFO, [MS-ODRAW] 2.2.58.
Path alongSegments(const ShapeGeometry& geometry, const Points& points) {
    constexpr unsigned lineTo = 0;
    constexpr unsigned curveTo = 1;
    constexpr unsigned moveTo = 2;
    constexpr unsigned close = 3;
    constexpr unsigned escape = 5;
    constexpr unsigned firstWithoutPoints = 10; // of the escapes: how a point is edited
    word::LittleEndianReader reader(geometry.segments, "pSegmentInfo");
    const ArrayHead head = readHead(reader);
    Path path;
    std::size_t next = 0;
    for (std::size_t i = 0; i < head.count && reader.remaining() >= 2; ++i) {
        const unsigned segment = reader.u16();
        const unsigned kind = segment >> 13U;
        const std::size_t times = segment & 0x1FFFU;
        const bool isKnown =
            kind <= close || (kind == escape && (times >> 8U) >= firstWithoutPoints);
        if (!isKnown) {
            return path;
        }
        const std::size_t each = kind == curveTo ? 3 : kind == lineTo || kind == moveTo ? 1 : 0;
        const std::size_t rounds = kind == moveTo ? 1 : each > 0 ? times : 0;
        for (std::size_t k = 0; k < rounds && next + each <= points.size(); ++k) {
            if (kind == curveTo) {
                path.curveTo(points[next], points[next + 1], points[next + 2]);
            } else if (kind == moveTo) {
                path.moveTo(points[next]);
            } else {
                path.lineTo(points[next]);
            }
            next += each;
        }
        if (kind == close) {
            path.close();
        }
    }
    return path;
}

} // namespace

Path ownOutline(const ShapeGeometry& geometry, const PageArea& area, const ShapeTurn& turn) {
    const Points points = verticesOf(geometry);
    return placed(geometry.segments.empty() ? closedThrough(points)
                                            : alongSegments(geometry, points),
                  area, turn);
}

bool isOpenShape(unsigned kind) {
    constexpr std::array<unsigned, 10> open{arc,
                                            line,
                                            straightConnector,
                                            bentConnector2,
                                            bentConnector3,
                                            curvedConnector3,
                                            leftBracket,
                                            rightBracket,
                                            leftBrace,
                                            rightBrace};
    return std::find(open.begin(), open.end(), kind) != open.end();
}

bool isTextArt(unsigned kind) { return kind >= firstTextArt && kind <= lastTextArt; }

PageArea uprightArea(const PageArea& area, double angle) {
    constexpr double half = std::numbers::pi;
    const double turned = angle - std::floor(angle / half) * half;
    if (turned < half / 4 || turned >= half * 3 / 4) {
        return area;
    }
    const double x = (area.left + area.right) / 2;
    const double y = (area.top + area.bottom) / 2;
    const double width = area.bottom - area.top;
    const double height = area.right - area.left;
    return {x - width / 2, y - height / 2, x + width / 2, y + height / 2};
}

Path shapeOutline(unsigned kind, const PageArea& area, const ShapeTurn& turn) {
    const double width = area.right - area.left;
    const double height = area.bottom - area.top;
    Path path = curvedOutline(kind, width, height);
    for (const PathPoint& corner : cornersOf(kind)) {
        path.lineTo(corner);
    }
    const bool isTurned = turn.angle != 0;
    if (path.isEmpty() && isTurned) { // a rectangle that does not stand upright
        path = rounded(0, 0);
    }
    if (!path.isEmpty() && path.steps.back() != Path::Step::close && !isOpenShape(kind)) {
        path.close();
    }
    return placed(std::move(path), area, turn);
}

Path arrowHead(PathPoint from, PathPoint tip, double lineWidth) {
    constexpr double size = 4; // of the line's width
    constexpr double least = 80;
    const double length = std::hypot(tip.x - from.x, tip.y - from.y);
    Path path;
    if (length <= 0) {
        return path;
    }
    const double reach = std::max(size * lineWidth, least);
    const double dx = (tip.x - from.x) / length * reach;
    const double dy = (tip.y - from.y) / length * reach;
    path.moveTo(tip);
    path.lineTo({tip.x - dx - dy / 2, tip.y - dy + dx / 2});
    path.lineTo({tip.x - dx + dy / 2, tip.y - dy - dx / 2});
    path.close();
    return path;
}

} // namespace qvnd::layout
