#include "platform/drawing/metafile/Geometry.h"

#include <algorithm>
#include <numbers>

namespace qvnd::drawing::metafile {

VectorPath PlaneMap::at(VectorPath path) const {
    for (VectorPoint& point : path.points) {
        point = at(point);
    }
    return path;
}

PlaneMap PlaneMap::then(const PlaneMap& next) const {
    return {next.turned(right), next.turned(down), next.at(origin)};
}

bool isSound(VectorPoint p) {
    constexpr double farthest = 1e9;
    return std::abs(p.x) <= farthest && std::abs(p.y) <= farthest; // false for what is no number
}

bool isSound(const VectorPath& path) {
    return std::all_of(path.points.begin(), path.points.end(),
                       [](VectorPoint point) { return isSound(point); });
}

Ellipse Ellipse::within(VectorPoint from, VectorPoint to) {
    return {{(from.x + to.x) / 2, (from.y + to.y) / 2},
            std::abs(to.x - from.x) / 2,
            std::abs(to.y - from.y) / 2};
}

double Ellipse::angleOf(VectorPoint place) const {
    return std::atan2((place.y - centre.y) / ry, (place.x - centre.x) / rx);
}

VectorPoint Ellipse::beside(double angle, double along) const {
    return {centre.x + rx * (std::cos(angle) - along * std::sin(angle)),
            centre.y + ry * (std::sin(angle) + along * std::cos(angle))};
}

void Ellipse::addArc(VectorPath& path, double begin, double turn) const {
    constexpr double quarter = std::numbers::pi / 2;
    const int parts = std::max(1, static_cast<int>(std::ceil(std::abs(turn) / quarter)));
    const double step = turn / parts;
    const double pull = 4.0 / 3 * std::tan(step / 4);
    path.lineTo(at(begin));
    for (int i = 0; i < parts; ++i) {
        const double angle = begin + i * step;
        path.curveTo(beside(angle, pull), beside(angle + step, -pull), at(angle + step));
    }
}

VectorPath linesThrough(std::span<const VectorPoint> points) {
    VectorPath path;
    for (const VectorPoint& point : points) {
        path.lineTo(point);
    }
    return path;
}

void addRectangle(VectorPath& path, VectorPoint from, VectorPoint to) {
    path.moveTo(from);
    path.lineTo({to.x, from.y});
    path.lineTo(to);
    path.lineTo({from.x, to.y});
    path.close();
}

VectorPath rectanglesBetween(std::span<const VectorPoint> corners) {
    VectorPath path;
    for (std::size_t i = 0; i + 1 < corners.size(); i += 2) {
        addRectangle(path, corners[i], corners[i + 1]);
    }
    return path;
}

VectorPath roundedRectangle(VectorPoint from, VectorPoint to, VectorPoint corner) {
    constexpr double pull = 0.5523; // of a curve that is a quarter of a circle
    const double left = std::min(from.x, to.x);
    const double right = std::max(from.x, to.x);
    const double top = std::min(from.y, to.y);
    const double bottom = std::max(from.y, to.y);
    const double rx = std::min(std::abs(corner.x), right - left) / 2;
    const double ry = std::min(std::abs(corner.y), bottom - top) / 2;
    const double kx = rx * (1 - pull);
    const double ky = ry * (1 - pull);
    VectorPath path;
    path.moveTo({left + rx, top});
    path.lineTo({right - rx, top});
    path.curveTo({right - kx, top}, {right, top + ky}, {right, top + ry});
    path.lineTo({right, bottom - ry});
    path.curveTo({right, bottom - ky}, {right - kx, bottom}, {right - rx, bottom});
    path.lineTo({left + rx, bottom});
    path.curveTo({left + kx, bottom}, {left, bottom - ky}, {left, bottom - ry});
    path.lineTo({left, top + ry});
    path.curveTo({left, top + ky}, {left + kx, top}, {left + rx, top});
    path.close();
    return path;
}

} // namespace qvnd::drawing::metafile
