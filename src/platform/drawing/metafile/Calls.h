#pragma once

#include "platform/drawing/metafile/DeviceContext.h"

#include <array>

// Records of both formats that hold nothing but the numbers of one call to the graphics device.
namespace qvnd::drawing::metafile {

enum class Call : std::uint8_t {
    saveContext,
    restoreContext,
    setMapMode,
    setWindowOrigin,
    setWindowExtent,
    setViewportOrigin,
    setViewportExtent,
    offsetWindowOrigin,
    scaleWindowExtent,
    scaleViewportExtent,
    setBackgroundMode,
    setRasterOperation,
    setPolyFillMode,
    setTextAlign,
    setTextColour,
    setBackground,
    setArcDirection,
    moveTo,
    lineTo,
    setPixel,
    rectangle,
    roundRectangle,
    ellipse,
    arc,
    chord,
    pie,
    arcTo,
    beginPath,
    endPath,
    closeFigure,
    abortPath,
    fillPath,
    strokePath,
    strokeAndFillPath,
    selectClipPath,
    intersectClip,
    excludeClip,
};

// How a format records a call.
struct CallRecord {
    Call call;
    std::uint16_t wmf;    // RecordType, [MS-WMF] 2.1.1.1; 0 where a WMF has none
    std::uint16_t emf;    // RecordType, [MS-EMF] 2.1.1; 0 where an EMF has none
    std::uint8_t numbers; // arguments
    bool endsInColour = false;
};
// Nothing for records of any other kind.
const CallRecord* callOfWmf(std::uint32_t type);
const CallRecord* callOfEmf(std::uint32_t type);

// The arguments of a call, in the call's order.
struct Arguments {
    std::array<std::int32_t, 8> numbers{};

    VectorPoint point(std::size_t at) const {
        return {static_cast<double>(numbers[at]), static_cast<double>(numbers[at + 1])};
    }
    std::uint32_t unsignedAt(std::size_t at) const {
        return static_cast<std::uint32_t>(numbers[at]);
    }
};

void carryOut(Call call, const Arguments& arguments, DeviceContext& context);

// RegionMode, [MS-EMF] 2.1.29; union and exclusive or, which hardly occur, replace.
DeviceContext::ClipMode clipModeOf(std::uint32_t mode);

} // namespace qvnd::drawing::metafile
