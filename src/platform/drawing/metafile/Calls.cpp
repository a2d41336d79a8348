#include "platform/drawing/metafile/Calls.h"

#include <algorithm>

namespace qvnd::drawing::metafile {

namespace {

constexpr CallRecord records[] = {
    {Call::saveContext, 0x001E, 33, 0},
    {Call::restoreContext, 0x0127, 34, 1},
    {Call::setMapMode, 0x0103, 17, 1},
    {Call::setWindowOrigin, 0x020B, 10, 2},
    {Call::setWindowExtent, 0x020C, 9, 2},
    {Call::setViewportOrigin, 0, 12, 2},
    {Call::setViewportExtent, 0, 11, 2},
    {Call::offsetWindowOrigin, 0x020F, 0, 2},
    {Call::scaleWindowExtent, 0x0410, 32, 4},
    {Call::scaleViewportExtent, 0, 31, 4},
    {Call::setBackgroundMode, 0x0102, 18, 1},
    {Call::setRasterOperation, 0x0104, 20, 1},
    {Call::setPolyFillMode, 0x0106, 19, 1},
    {Call::setTextAlign, 0x012E, 22, 1},
    {Call::setTextColour, 0x0209, 24, 1, true},
    {Call::setBackground, 0x0201, 25, 1, true},
    {Call::setArcDirection, 0, 57, 1},
    {Call::moveTo, 0x0214, 27, 2},
    {Call::lineTo, 0x0213, 54, 2},
    {Call::setPixel, 0x041F, 15, 3, true},
    {Call::rectangle, 0x041B, 43, 4},
    {Call::roundRectangle, 0x061C, 44, 6},
    {Call::ellipse, 0x0418, 42, 4},
    {Call::arc, 0x0817, 45, 8},
    {Call::chord, 0x0830, 46, 8},
    {Call::pie, 0x081A, 47, 8},
    {Call::arcTo, 0, 55, 8},
    {Call::beginPath, 0, 59, 0},
    {Call::endPath, 0, 60, 0},
    {Call::closeFigure, 0, 61, 0},
    {Call::abortPath, 0, 68, 0},
    {Call::fillPath, 0, 62, 0},
    {Call::strokePath, 0, 64, 0},
    {Call::strokeAndFillPath, 0, 63, 0},
    {Call::selectClipPath, 0, 67, 1},
    {Call::intersectClip, 0x0416, 30, 4},
    {Call::excludeClip, 0x0415, 29, 4},
};

const CallRecord* find(std::uint32_t type, std::uint16_t CallRecord::*format) {
    const auto* found =
        std::find_if(std::begin(records), std::end(records),
                     [&](const CallRecord& record) { return record.*format == type && type != 0; });
    return found != std::end(records) ? found : nullptr;
}

using Mapping = DeviceContext::Mapping;

// A mode with fixed units leaves its extents as they are ([MS-WMF] 2.1.1.16).
bool usesExtents(const Mapping& mapping) { return mapping.mode > 6; }

void setExtent(const Mapping& mapping, VectorPoint& extent, VectorPoint wanted) {
    if (usesExtents(mapping) && wanted.x != 0 && wanted.y != 0) {
        extent = wanted;
    }
}

// The arguments are a multiplier and a divisor for each direction.
void scaleExtent(const Mapping& mapping, VectorPoint& extent, const Arguments& arguments) {
    const auto& n = arguments.numbers;
    if (n[1] != 0 && n[3] != 0) {
        setExtent(mapping, extent, {extent.x * n[0] / n[1], extent.y * n[2] / n[3]});
    }
}

bool changeMapping(Call call, const Arguments& arguments, Mapping& mapping) {
    switch (call) {
    case Call::setMapMode:
        mapping.mode = arguments.unsignedAt(0);
        return true;
    case Call::setWindowOrigin:
        mapping.windowOrigin = arguments.point(0);
        return true;
    case Call::setWindowExtent:
        setExtent(mapping, mapping.windowExtent, arguments.point(0));
        return true;
    case Call::setViewportOrigin:
        mapping.viewportOrigin = arguments.point(0);
        return true;
    case Call::setViewportExtent:
        setExtent(mapping, mapping.viewportExtent, arguments.point(0));
        return true;
    case Call::offsetWindowOrigin:
        mapping.windowOrigin.x += arguments.numbers[0];
        mapping.windowOrigin.y += arguments.numbers[1];
        return true;
    case Call::scaleWindowExtent:
        scaleExtent(mapping, mapping.windowExtent, arguments);
        return true;
    case Call::scaleViewportExtent:
        scaleExtent(mapping, mapping.viewportExtent, arguments);
        return true;
    default:
        return false;
    }
}

bool changeState(Call call, const Arguments& arguments, DeviceContext& context) {
    constexpr std::uint32_t second = 2; // opaque, winding, clockwise
    DeviceContext::State& state = context.state();
    const std::uint32_t number = arguments.unsignedAt(0);
    switch (call) {
    case Call::saveContext:
        context.save();
        return true;
    case Call::restoreContext:
        context.restore(arguments.numbers[0]);
        return true;
    case Call::setBackgroundMode:
        state.isOpaque = number == second;
        return true;
    case Call::setRasterOperation:
        state.rasterOperation = number;
        return true;
    case Call::setPolyFillMode:
        state.winding = number == second;
        return true;
    case Call::setTextAlign:
        state.textAlign = number;
        return true;
    case Call::setTextColour:
        state.textColour = colourOfRecord(number);
        return true;
    case Call::setBackground:
        state.background = colourOfRecord(number);
        return true;
    case Call::setArcDirection:
        state.arcsClockwise = number == second;
        return true;
    default:
        return false;
    }
}

bool drawFigure(Call call, const Arguments& arguments, DeviceContext& context) {
    using Arc = DeviceContext::Arc;
    const VectorPoint from = arguments.point(0);
    const VectorPoint to = arguments.point(2);
    const auto arc = [&](Arc kind) {
        context.arc(from, to, arguments.point(4), arguments.point(6), kind);
        return true;
    };
    switch (call) {
    case Call::moveTo:
        context.moveTo(from);
        return true;
    case Call::lineTo:
        context.lineTo(from);
        return true;
    case Call::setPixel:
        context.pixel(from, colourOfRecord(arguments.unsignedAt(2)));
        return true;
    case Call::rectangle:
        context.rectangle(from, to);
        return true;
    case Call::roundRectangle:
        context.roundRectangle(from, to, arguments.point(4));
        return true;
    case Call::ellipse:
        context.ellipse(from, to);
        return true;
    case Call::arc:
        return arc(Arc::open);
    case Call::chord:
        return arc(Arc::chord);
    case Call::pie:
        return arc(Arc::pie);
    case Call::arcTo:
        return arc(Arc::joined);
    default:
        return false;
    }
}

bool usePath(Call call, const Arguments& arguments, DeviceContext& context) {
    using Mode = DeviceContext::ClipMode;
    switch (call) {
    case Call::beginPath:
        context.beginPath();
        return true;
    case Call::endPath:
        context.endPath();
        return true;
    case Call::closeFigure:
        context.closeFigure();
        return true;
    case Call::abortPath:
        context.dropPath();
        return true;
    case Call::fillPath:
        context.drawPath(true, false);
        return true;
    case Call::strokePath:
        context.drawPath(false, true);
        return true;
    case Call::strokeAndFillPath:
        context.drawPath(true, true);
        return true;
    case Call::selectClipPath:
        context.clipToPath(clipModeOf(arguments.unsignedAt(0)));
        return true;
    case Call::intersectClip:
        context.clipToRectangle(arguments.point(0), arguments.point(2), Mode::intersect);
        return true;
    case Call::excludeClip:
        context.clipToRectangle(arguments.point(0), arguments.point(2), Mode::exclude);
        return true;
    default:
        return false;
    }
}

} // namespace

const CallRecord* callOfWmf(std::uint32_t type) { return find(type, &CallRecord::wmf); }
const CallRecord* callOfEmf(std::uint32_t type) { return find(type, &CallRecord::emf); }

void carryOut(Call call, const Arguments& arguments, DeviceContext& context) {
    if (!changeMapping(call, arguments, context.state().mapping) &&
        !changeState(call, arguments, context) && !drawFigure(call, arguments, context)) {
        usePath(call, arguments, context);
    }
}

DeviceContext::ClipMode clipModeOf(std::uint32_t mode) {
    constexpr std::uint32_t both = 1;
    constexpr std::uint32_t difference = 4;
    using Mode = DeviceContext::ClipMode;
    return mode == both ? Mode::intersect : mode == difference ? Mode::exclude : Mode::replace;
}

} // namespace qvnd::drawing::metafile
