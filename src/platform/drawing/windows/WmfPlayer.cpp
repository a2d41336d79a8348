#include "platform/drawing/windows/WmfPlayer.h"

#include "platform/word/docfile/container/FormatError.h"

namespace qvnd::drawing {

namespace {

constexpr std::size_t placeableHeader = 22;
constexpr std::uint32_t placeableKey = 0x9AC6CDD7;

} // namespace

WmfPlayer::WmfPlayer(word::ByteView file, QPainter& painter, const QRectF& target)
    : file_(file),
      dc_(painter, QTransform(target.width(), 0, 0, target.height(), target.left(), target.top()),
          target) {
    if (!readPlaceable()) {
        findWindow();
    }
}

// The bounds of a placeable file are its window until a record sets another.
bool WmfPlayer::readPlaceable() {
    In in(file_, "WMF");
    if (in.u32() != placeableKey) {
        return false;
    }
    in.skip(2);
    const double left = in.i16();
    const double top = in.i16();
    const double right = in.i16();
    dc_.state.windowOrigin = {left, top};
    dc_.state.windowExtent = {right - left, in.i16() - top};
    in.seek(placeableHeader);
    file_ = file_.subspan(placeableHeader);
    return true;
}

// A plain file is drawn in the first window that it sets, also what it draws before.
void WmfPlayer::findWindow() {
    constexpr unsigned setWindowExtRecord = 0x020C;
    constexpr std::size_t header = 18;
    In in(file_, "WMF");
    in.skip(std::min(header, in.remaining()));
    while (in.remaining() >= 6) {
        const std::size_t bytes = std::size_t{in.u32()} * 2;
        const unsigned function = in.u16();
        if (bytes < 6 || bytes - 6 > in.remaining()) {
            return;
        }
        if (function == setWindowExtRecord && bytes >= 10) {
            In record(in.view(bytes - 6), "WMF");
            setWindowExt(record);
            return;
        }
        in.skip(bytes - 6);
    }
}

void WmfPlayer::play() {
    constexpr std::size_t wordsOfHeader = 2; // where the header tells its own size
    In in(file_, "WMF");
    in.skip(wordsOfHeader);
    in.seek(std::size_t{in.u16()} * 2);
    while (in.remaining() >= 6) {
        const std::size_t bytes = std::size_t{in.u32()} * 2;
        const unsigned function = in.u16();
        if (bytes < 6 || bytes - 6 > in.remaining() || function == 0) {
            return;
        }
        In record(in.view(bytes - 6), "WMF record");
        if (const auto handler = handlers().find(function); handler != handlers().end()) {
            try {
                (this->*handler->second)(record);
            } catch (const word::FormatError&) {
                continue; // a record that is too short is passed over
            }
        }
    }
}

// By the numbers of [MS-WMF] 2.1.1.1.
const std::unordered_map<unsigned, WmfPlayer::Handler>& WmfPlayer::handlers() {
    static const std::unordered_map<unsigned, Handler> all{
        {0x0201, &WmfPlayer::setBkColor},
        {0x0102, &WmfPlayer::setBkMode},
        {0x0104, &WmfPlayer::setRop2},
        {0x0106, &WmfPlayer::setPolyFillMode},
        {0x0209, &WmfPlayer::setTextColor},
        {0x012E, &WmfPlayer::setTextAlign},
        {0x020B, &WmfPlayer::setWindowOrg},
        {0x020C, &WmfPlayer::setWindowExt},
        {0x020F, &WmfPlayer::offsetWindowOrg},
        {0x0410, &WmfPlayer::scaleWindowExt},
        {0x0213, &WmfPlayer::lineTo},
        {0x0214, &WmfPlayer::moveTo},
        {0x0415, &WmfPlayer::excludeClipRect},
        {0x0416, &WmfPlayer::intersectClipRect},
        {0x0817, &WmfPlayer::arc},
        {0x0830, &WmfPlayer::chord},
        {0x081A, &WmfPlayer::pie},
        {0x0418, &WmfPlayer::ellipse},
        {0x041B, &WmfPlayer::rectangle},
        {0x061C, &WmfPlayer::roundRect},
        {0x061D, &WmfPlayer::patBlt},
        {0x001E, &WmfPlayer::saveDc},
        {0x0127, &WmfPlayer::restoreDc},
        {0x041F, &WmfPlayer::setPixel},
        {0x0521, &WmfPlayer::textOut},
        {0x0A32, &WmfPlayer::extTextOut},
        {0x0324, &WmfPlayer::polygon},
        {0x0325, &WmfPlayer::polyLine},
        {0x0538, &WmfPlayer::polyPolygon},
        {0x0940, &WmfPlayer::dibBitBlt},
        {0x0B41, &WmfPlayer::dibStretchBlt},
        {0x0F43, &WmfPlayer::stretchDib},
        {0x0D33, &WmfPlayer::setDibToDev},
        {0x02FA, &WmfPlayer::createPen},
        {0x02FB, &WmfPlayer::createFont},
        {0x02FC, &WmfPlayer::createBrush},
        {0x0142, &WmfPlayer::createPatternBrush},
        {0x06FF, &WmfPlayer::createRegion},
        {0x00F7, &WmfPlayer::createOther},
        {0x01F9, &WmfPlayer::createOther},
        {0x012D, &WmfPlayer::selectObject},
        {0x01F0, &WmfPlayer::deleteObject},
        {0x012C, &WmfPlayer::selectClipRegion},
        {0x0228, &WmfPlayer::fillRegion},
        {0x012B, &WmfPlayer::paintRegion},
    };
    return all;
}

// --- numbers ------------------------------------------------------------------------------------

QPointF WmfPlayer::point(In& in) {
    const double y = in.i16();
    return {static_cast<double>(in.i16()), y};
}

QPointF WmfPlayer::forwardPoint(In& in) {
    const double x = in.i16();
    return {x, static_cast<double>(in.i16())};
}

QRectF WmfPlayer::box(In& in) {
    const QPointF last = point(in);
    return QRectF(point(in), last).normalized();
}

std::vector<QPointF> WmfPlayer::points(In& in, std::size_t count) {
    std::vector<QPointF> all;
    for (std::size_t i = 0; i < count && in.remaining() >= 4; ++i) {
        all.push_back(forwardPoint(in));
    }
    return all;
}

// --- state --------------------------------------------------------------------------------------

void WmfPlayer::setWindowExt(In& in) {
    const QPointF extent = point(in);
    if (extent.x() != 0 && extent.y() != 0) {
        dc_.state.windowExtent = {extent.x(), extent.y()};
    }
}

void WmfPlayer::scaleWindowExt(In& in) {
    const double yWhole = in.i16();
    const double y = in.i16();
    const double xWhole = in.i16();
    const double x = in.i16();
    if (x != 0 && y != 0 && xWhole != 0 && yWhole != 0) {
        QSizeF& extent = dc_.state.windowExtent;
        extent = {extent.width() * x / xWhole, extent.height() * y / yWhole};
    }
}

// --- shapes -------------------------------------------------------------------------------------

void WmfPlayer::rectangle(In& in) {
    QPainterPath path;
    path.addRect(box(in));
    dc_.draw(path, DeviceContext::Shape::filled);
}

void WmfPlayer::roundRect(In& in) {
    const QPointF corner = point(in);
    QPainterPath path;
    path.addRoundedRect(box(in), corner.x() / 2, corner.y() / 2);
    dc_.draw(path, DeviceContext::Shape::filled);
}

void WmfPlayer::ellipse(In& in) {
    QPainterPath path;
    path.addEllipse(box(in));
    dc_.draw(path, DeviceContext::Shape::filled);
}

void WmfPlayer::arcLike(In& in, ArcKind kind) {
    const QPointF end = point(in);
    const QPointF start = point(in);
    dc_.draw(arcOf(box(in), start, end, kind),
             kind == ArcKind::open ? DeviceContext::Shape::outline : DeviceContext::Shape::filled);
}

void WmfPlayer::polygon(In& in) {
    const std::size_t count = in.u16();
    dc_.draw(polyline(points(in, count), true), DeviceContext::Shape::filled);
}

void WmfPlayer::polyLine(In& in) {
    const std::size_t count = in.u16();
    dc_.draw(polyline(points(in, count), false), DeviceContext::Shape::outline);
}

void WmfPlayer::polyPolygon(In& in) {
    std::vector<std::size_t> counts(in.u16());
    for (std::size_t& count : counts) {
        count = in.u16();
    }
    QPainterPath path;
    for (const std::size_t count : counts) {
        path.addPath(polyline(points(in, count), true));
    }
    dc_.draw(path, DeviceContext::Shape::filled);
}

void WmfPlayer::setPixel(In& in) {
    const QColor color = colorOf(in.u32());
    const LogicalPen pen = dc_.state.pen;
    dc_.state.pen = {Qt::SolidLine, 0, color};
    QPainterPath path(point(in));
    path.lineTo(path.currentPosition() + QPointF(0.01, 0));
    dc_.draw(path, DeviceContext::Shape::outline);
    dc_.state.pen = pen;
}

void WmfPlayer::patBlt(In& in) {
    const std::uint32_t operation = in.u32();
    const QPointF size = point(in);
    dc_.fillRect(QRectF(point(in), QSizeF(size.x(), size.y())), operation);
}

} // namespace qvnd::drawing
