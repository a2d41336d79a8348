#include "platform/drawing/windows/EmfPlayer.h"

#include <algorithm>
#include <cmath>

// The records of an EMF that draw shapes, build paths and clip.
namespace qvnd::drawing {

using Shape = DeviceContext::Shape;

// --- shapes -------------------------------------------------------------------------------------

void EmfPlayer::moveTo(In& in) { dc_.state.position = point(in); }

void EmfPlayer::rectangle(In& in) {
    QPainterPath path;
    path.addRect(box(in));
    dc_.draw(path, Shape::filled);
}

void EmfPlayer::roundRect(In& in) {
    const QRectF place = box(in);
    const QSizeF corner = extentOf(in);
    QPainterPath path;
    path.addRoundedRect(place, corner.width() / 2, corner.height() / 2);
    dc_.draw(path, Shape::filled);
}

void EmfPlayer::ellipse(In& in) {
    QPainterPath path;
    path.addEllipse(box(in));
    dc_.draw(path, Shape::filled);
}

void EmfPlayer::arcLike(In& in, ArcKind kind) {
    const QRectF place = box(in);
    const QPointF start = point(in);
    dc_.draw(arcOf(place, start, point(in), kind),
             kind == ArcKind::open ? Shape::outline : Shape::filled);
}

void EmfPlayer::arcTo(In& in) {
    const QRectF place = box(in);
    const QPointF start = point(in);
    QPainterPath path(dc_.state.position);
    path.connectPath(arcOf(place, start, point(in), ArcKind::open));
    dc_.draw(path, Shape::outline);
    dc_.state.position = path.currentPosition();
}

void EmfPlayer::angleArc(In& in) {
    const QPointF centre = point(in);
    const double radius = in.u32();
    const double start = single(in);
    const double sweep = single(in);
    if (!std::isfinite(start) || !std::isfinite(sweep)) {
        return;
    }
    QPainterPath path(dc_.state.position);
    path.arcTo(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), start,
               std::clamp(sweep, -360.0, 360.0));
    dc_.draw(path, Shape::outline);
    dc_.state.position = path.currentPosition();
}

void EmfPlayer::setPixel(In& in) {
    const QPointF at = point(in);
    const QBrush brush = dc_.state.brush;
    dc_.state.brush = colorOf(in.u32());
    constexpr std::uint32_t patternCopy = 0x00F00021;
    dc_.fillRect(QRectF(at, QSizeF(1, 1)), patternCopy);
    dc_.state.brush = brush;
}

void EmfPlayer::poly(In& in, Width width, bool isClosed) {
    in.skip(boundsSize);
    const std::size_t count = in.u32();
    dc_.draw(polyline(points(in, width, count), isClosed),
             isClosed ? Shape::filled : Shape::outline);
}

void EmfPlayer::polyTo(In& in, Width width) {
    in.skip(boundsSize);
    const std::size_t count = in.u32();
    std::vector<QPointF> all = points(in, width, count);
    all.insert(all.begin(), dc_.state.position);
    dc_.draw(polyline(all, false), Shape::outline);
    dc_.state.position = all.back();
}

void EmfPlayer::bezier(In& in, Width width, From from) {
    in.skip(boundsSize);
    const std::size_t count = in.u32();
    std::vector<QPointF> all = points(in, width, count);
    if (from == From::position) {
        all.insert(all.begin(), dc_.state.position);
    }
    if (all.empty()) {
        return;
    }
    QPainterPath path(all.front());
    for (std::size_t i = 1; i + 2 < all.size(); i += 3) {
        path.cubicTo(all[i], all[i + 1], all[i + 2]);
    }
    dc_.draw(path, Shape::outline);
    if (from == From::position) {
        dc_.state.position = path.currentPosition();
    }
}

void EmfPlayer::polyPoly(In& in, Width width, bool isClosed) {
    in.skip(boundsSize);
    const std::size_t polygons = in.u32();
    in.skip(4);
    std::vector<std::size_t> counts;
    while (counts.size() < polygons) {
        counts.push_back(in.u32());
    }
    QPainterPath path;
    for (const std::size_t count : counts) {
        path.addPath(polyline(points(in, width, count), isClosed));
    }
    dc_.draw(path, isClosed ? Shape::filled : Shape::outline);
}

// Each point has a kind of its own: 2 line to, 4 Bézier to (three together), 6 move to; plus 1 when
// the figure is closed there.
void EmfPlayer::drawKinds(In& in, Width width) {
    in.skip(boundsSize);
    const std::size_t count = in.u32();
    const std::vector<QPointF> all = points(in, width, count);
    const word::ByteView kinds = in.view(std::min(all.size(), in.remaining()));
    QPainterPath path(dc_.state.position);
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const unsigned kind = kinds[i] & 6U;
        if (kind == 6) {
            path.moveTo(all[i]);
        } else if (kind == 4 && i + 2 < kinds.size()) {
            path.cubicTo(all[i], all[i + 1], all[i + 2]);
            i += 2;
        } else {
            path.lineTo(all[i]);
        }
        if (kinds[i] & 1U) {
            path.closeSubpath();
        }
    }
    dc_.draw(path, Shape::outline);
    dc_.state.position = path.currentPosition();
}

// --- paths and clipping -------------------------------------------------------------------------

namespace {

// RegionMode ([MS-EMF] 2.1.29); union and exclusive or, which hardly occur, replace.
DeviceContext::Clip clipOf(std::uint32_t mode) {
    constexpr std::uint32_t intersect = 1;
    constexpr std::uint32_t difference = 4;
    using Clip = DeviceContext::Clip;
    return mode == intersect ? Clip::intersect : mode == difference ? Clip::exclude : Clip::replace;
}

} // namespace

void EmfPlayer::selectClipPath(In& in) { dc_.clipToPath(clipOf(in.u32())); }

LogicalRegion EmfPlayer::region(In& in) {
    constexpr std::size_t header = 32;
    const std::size_t start = in.position();
    in.skip(header / 4);
    const std::size_t count = in.u32();
    in.seek(start + header);
    LogicalRegion region;
    for (std::size_t i = 0; i < count && in.remaining() >= boundsSize; ++i) {
        region.path.addRect(box(in));
    }
    return region;
}

void EmfPlayer::extSelectClipRgn(In& in) {
    const std::uint32_t size = in.u32();
    const std::uint32_t mode = in.u32();
    if (size == 0) {
        dc_.clearClip();
    } else {
        dc_.clip(region(in), clipOf(mode));
    }
}

void EmfPlayer::fillRgn(In& in) {
    in.skip(boundsSize + 4);
    const auto* brush = std::get_if<QBrush>(&objects_.at(in.u32()));
    if (brush) {
        LogicalRegion filled = region(in);
        filled.path = dc_.toDevice().map(filled.path);
        dc_.fillRegion(filled, *brush);
    }
}

void EmfPlayer::paintRgn(In& in) {
    in.skip(boundsSize + 4);
    LogicalRegion painted = region(in);
    painted.path = dc_.toDevice().map(painted.path);
    dc_.fillRegion(painted, dc_.state.brush);
}

} // namespace qvnd::drawing
