#include "platform/drawing/windows/EmfPlayer.h"

#include "platform/word/docfile/container/FormatError.h"

#include <cmath>

namespace qvnd::drawing {

namespace {

QTransform ontoTarget(const QRectF& frame, const QRectF& target) {
    const double x = frame.width() > 0 ? target.width() / frame.width() : 1;
    const double y = frame.height() > 0 ? target.height() / frame.height() : 1;
    return {x, 0, 0, y, target.left() - frame.left() * x, target.top() - frame.top() * y};
}

} // namespace

EmfPlayer::ReferenceDevice EmfPlayer::readHeader(word::ByteView file) {
    constexpr std::size_t deviceAt = 72;
    In in(file, "EMF");
    in.skip(recordHeader);
    double numbers[8];
    for (double& number : numbers) {
        number = in.i32();
    }
    in.seek(deviceAt);
    const double width = in.i32();
    const double height = in.i32();
    const double wide = in.i32();
    const double high = in.i32();
    ReferenceDevice device;
    if (width > 0 && height > 0 && wide > 0 && high > 0) {
        device.unitsPerMillimetre = {width / wide, height / high};
    }
    const auto hundredths = [&](double x, double y) {
        return QPointF(x / 100 * device.unitsPerMillimetre.width(),
                       y / 100 * device.unitsPerMillimetre.height());
    };
    device.frame = QRectF(hundredths(numbers[4], numbers[5]), hundredths(numbers[6], numbers[7]));
    if (device.frame.width() <= 0 || device.frame.height() <= 0) {
        device.frame =
            QRectF(QPointF(numbers[0], numbers[1]), QPointF(numbers[2] + 1, numbers[3] + 1));
    }
    return device;
}

EmfPlayer::EmfPlayer(word::ByteView file, QPainter& painter, const QRectF& target)
    : file_(file), device_(readHeader(file)),
      dc_(painter, ontoTarget(device_.frame, target), target) {}

void EmfPlayer::play() {
    constexpr std::uint32_t endOfFile = 14;
    In in(file_, "EMF");
    while (in.remaining() >= recordHeader) {
        const std::size_t start = in.position();
        const std::uint32_t type = in.u32();
        const std::size_t size = in.u32();
        if (size < recordHeader || size > file_.size() - start || type == endOfFile) {
            return;
        }
        in.seek(start);
        In record(in.view(size), "EMF record");
        record.skip(recordHeader);
        if (const auto handler = handlers().find(type); handler != handlers().end()) {
            try {
                (this->*handler->second)(record);
            } catch (const word::FormatError&) {
                continue; // a record that is too short is passed over
            }
        }
    }
}

// By the numbers of [MS-EMF] 2.1.1.
const std::unordered_map<std::uint32_t, EmfPlayer::Handler>& EmfPlayer::handlers() {
    static const std::unordered_map<std::uint32_t, Handler> all{
        {2, &EmfPlayer::polyBezier},
        {3, &EmfPlayer::polygon},
        {4, &EmfPlayer::polyline_},
        {5, &EmfPlayer::polyBezierTo},
        {6, &EmfPlayer::polylineTo},
        {7, &EmfPlayer::polyPolyline},
        {8, &EmfPlayer::polyPolygon},
        {9, &EmfPlayer::setWindowExt},
        {10, &EmfPlayer::setWindowOrg},
        {11, &EmfPlayer::setViewportExt},
        {12, &EmfPlayer::setViewportOrg},
        {15, &EmfPlayer::setPixel},
        {17, &EmfPlayer::setMapMode},
        {18, &EmfPlayer::setBkMode},
        {19, &EmfPlayer::setPolyFillMode},
        {20, &EmfPlayer::setRop2},
        {22, &EmfPlayer::setTextAlign},
        {24, &EmfPlayer::setTextColor},
        {25, &EmfPlayer::setBkColor},
        {27, &EmfPlayer::moveTo},
        {29, &EmfPlayer::excludeClipRect},
        {30, &EmfPlayer::intersectClipRect},
        {31, &EmfPlayer::scaleViewportExt},
        {32, &EmfPlayer::scaleWindowExt},
        {33, &EmfPlayer::saveDc},
        {34, &EmfPlayer::restoreDc},
        {35, &EmfPlayer::setWorldTransform},
        {36, &EmfPlayer::modifyWorldTransform},
        {37, &EmfPlayer::selectObject},
        {38, &EmfPlayer::createPen},
        {39, &EmfPlayer::createBrush},
        {40, &EmfPlayer::deleteObject},
        {41, &EmfPlayer::angleArc},
        {42, &EmfPlayer::ellipse},
        {43, &EmfPlayer::rectangle},
        {44, &EmfPlayer::roundRect},
        {45, &EmfPlayer::arc},
        {46, &EmfPlayer::chord},
        {47, &EmfPlayer::pie},
        {54, &EmfPlayer::lineTo},
        {55, &EmfPlayer::arcTo},
        {56, &EmfPlayer::polyDraw},
        {59, &EmfPlayer::beginPath},
        {60, &EmfPlayer::endPath},
        {61, &EmfPlayer::closeFigure},
        {62, &EmfPlayer::fillPath},
        {63, &EmfPlayer::strokeAndFillPath},
        {64, &EmfPlayer::strokePath},
        {67, &EmfPlayer::selectClipPath},
        {68, &EmfPlayer::abortPath},
        {71, &EmfPlayer::fillRgn},
        {74, &EmfPlayer::paintRgn},
        {75, &EmfPlayer::extSelectClipRgn},
        {76, &EmfPlayer::bitBlt},
        {77, &EmfPlayer::stretchBlt},
        {80, &EmfPlayer::setDiBitsToDevice},
        {81, &EmfPlayer::stretchDiBits},
        {82, &EmfPlayer::createFont},
        {83, &EmfPlayer::extTextOutA},
        {84, &EmfPlayer::extTextOutW},
        {85, &EmfPlayer::polyBezier16},
        {86, &EmfPlayer::polygon16},
        {87, &EmfPlayer::polyline16},
        {88, &EmfPlayer::polyBezierTo16},
        {89, &EmfPlayer::polylineTo16},
        {90, &EmfPlayer::polyPolyline16},
        {91, &EmfPlayer::polyPolygon16},
        {92, &EmfPlayer::polyDraw16},
        {93, &EmfPlayer::createPatternBrush},
        {94, &EmfPlayer::createPatternBrush},
        {95, &EmfPlayer::extCreatePen},
        {108, &EmfPlayer::smallTextOut},
        {114, &EmfPlayer::alphaBlend},
    };
    return all;
}

// --- numbers ------------------------------------------------------------------------------------

QPointF EmfPlayer::point(In& in, Width width) {
    const double x = width == Width::half ? in.i16() : in.i32();
    return {x, static_cast<double>(width == Width::half ? in.i16() : in.i32())};
}

QSizeF EmfPlayer::extentOf(In& in) {
    const QPointF read = point(in);
    return {read.x(), read.y()};
}

QRectF EmfPlayer::box(In& in) {
    const QPointF first = point(in);
    return QRectF(first, point(in)).normalized();
}

QTransform EmfPlayer::transform(In& in) {
    double numbers[6];
    for (double& number : numbers) {
        number = single(in);
        if (!std::isfinite(number)) {
            number = 0;
        }
    }
    return {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]};
}

std::vector<QPointF> EmfPlayer::points(In& in, Width width, std::size_t count) {
    const std::size_t size = width == Width::half ? 4 : 8;
    std::vector<QPointF> all;
    for (std::size_t i = 0; i < count && in.remaining() >= size; ++i) {
        all.push_back(point(in, width));
    }
    return all;
}

// --- mapping ------------------------------------------------------------------------------------

// MapMode ([MS-EMF] 2.1.21): 1 pixels, 2 to 6 fixed lengths with y going up, 7 and 8 by extents.
void EmfPlayer::setMapMode(In& in) {
    constexpr double millimetres[] = {0, 0, 0.1, 0.01, 0.254, 0.0254, 25.4 / 1440};
    constexpr std::uint32_t isotropic = 7;
    mapMode_ = in.u32();
    dc_.state.isIsotropic = mapMode_ == isotropic;
    if (mapMode_ >= isotropic) {
        return;
    }
    dc_.state.windowExtent = dc_.state.viewportExtent = {1, 1};
    if (mapMode_ >= 2) {
        const double unit = millimetres[mapMode_];
        dc_.state.viewportExtent = {device_.unitsPerMillimetre.width() * unit,
                                    -device_.unitsPerMillimetre.height() * unit};
    }
}

void EmfPlayer::setExtent(In& in, QSizeF& extent) const {
    const QSizeF read = extentOf(in);
    if (mapMode_ >= 7 && read.width() != 0 && read.height() != 0) {
        extent = read;
    }
}

void EmfPlayer::scaleExtent(In& in, QSizeF& extent) const {
    const double x = in.i32();
    const double xWhole = in.i32();
    const double y = in.i32();
    const double yWhole = in.i32();
    if (mapMode_ >= 7 && x != 0 && y != 0 && xWhole != 0 && yWhole != 0) {
        extent = {extent.width() * x / xWhole, extent.height() * y / yWhole};
    }
}

void EmfPlayer::modifyWorldTransform(In& in) {
    const QTransform change = transform(in);
    QTransform& world = dc_.state.world;
    switch (in.u32()) {
    case 1:
        world = {};
        break;
    case 2:
        world = change * world;
        break;
    case 3:
        world = world * change;
        break;
    case 4:
        world = change;
        break;
    default:
        break;
    }
}

} // namespace qvnd::drawing
