#pragma once

#include "platform/drawing/windows/DeviceContext.h"
#include "platform/drawing/windows/MetafileObjects.h"

#include <bit>
#include <unordered_map>

class QPainter;

namespace qvnd::drawing {

// Paints an enhanced metafile ([MS-EMF]) record by record; the frame that its header names fills
// the target.
class EmfPlayer {
public:
    // FormatError when the file is too short for its header. Painter and file outlive the object.
    EmfPlayer(word::ByteView file, QPainter& painter, const QRectF& target);
    // Records that are not known or damaged are passed over; the playing ends where the records no
    // longer line up.
    void play();

private:
    using In = word::LittleEndianReader;
    using Clip = DeviceContext::Clip;
    using Handler = void (EmfPlayer::*)(In&);
    static const std::unordered_map<std::uint32_t, Handler>& handlers();

    // What the header tells of the device that the picture was drawn for.
    struct ReferenceDevice {
        QRectF frame; // device units
        QSizeF unitsPerMillimetre{1, 1};
    };
    static ReferenceDevice readHeader(word::ByteView file);

    // What stands in front of the fields of a record, and of most drawing records.
    static constexpr std::size_t recordHeader = 8;
    static constexpr std::size_t boundsSize = 16;

    enum class Width { whole, half }; // of a coordinate: 32 or 16 bits
    enum class From { start, position };

    // --- state ----------------------------------------------------------------------------------
    void setBkMode(In& in) { dc_.state.isOpaque = in.u32() == 2; }
    void setPolyFillMode(In& in) {
        dc_.state.fillRule = in.u32() == 2 ? Qt::WindingFill : Qt::OddEvenFill;
    }
    void setRop2(In& in) { dc_.state.rasterOperation2 = in.u32(); }
    void setTextAlign(In& in) { dc_.state.textAlign = in.u32(); }
    void setTextColor(In& in) { dc_.state.textColor = colorOf(in.u32()); }
    void setBkColor(In& in) { dc_.state.backColor = colorOf(in.u32()); }
    void saveDc(In&) { dc_.save(); }
    void restoreDc(In& in) { dc_.restore(in.i32()); }

    // --- mapping --------------------------------------------------------------------------------
    void setMapMode(In& in);
    void setWindowExt(In& in) { setExtent(in, dc_.state.windowExtent); }
    void setViewportExt(In& in) { setExtent(in, dc_.state.viewportExtent); }
    void setExtent(In& in, QSizeF& extent) const;
    void setWindowOrg(In& in) { dc_.state.windowOrigin = point(in); }
    void setViewportOrg(In& in) { dc_.state.viewportOrigin = point(in); }
    void scaleWindowExt(In& in) { scaleExtent(in, dc_.state.windowExtent); }
    void scaleViewportExt(In& in) { scaleExtent(in, dc_.state.viewportExtent); }
    void scaleExtent(In& in, QSizeF& extent) const;
    void setWorldTransform(In& in) { dc_.state.world = transform(in); }
    void modifyWorldTransform(In& in);

    // --- shapes ---------------------------------------------------------------------------------
    void moveTo(In& in);
    void lineTo(In& in) { dc_.lineTo(point(in)); }
    void rectangle(In& in);
    void roundRect(In& in);
    void ellipse(In& in);
    void arc(In& in) { arcLike(in, ArcKind::open); }
    void chord(In& in) { arcLike(in, ArcKind::chord); }
    void pie(In& in) { arcLike(in, ArcKind::pie); }
    void arcTo(In& in);
    void arcLike(In& in, ArcKind kind);
    void angleArc(In& in);
    void setPixel(In& in);

    void polygon(In& in) { poly(in, Width::whole, true); }
    void polygon16(In& in) { poly(in, Width::half, true); }
    void polyline_(In& in) { poly(in, Width::whole, false); }
    void polyline16(In& in) { poly(in, Width::half, false); }
    void polylineTo(In& in) { polyTo(in, Width::whole); }
    void polylineTo16(In& in) { polyTo(in, Width::half); }
    void polyBezier(In& in) { bezier(in, Width::whole, From::start); }
    void polyBezier16(In& in) { bezier(in, Width::half, From::start); }
    void polyBezierTo(In& in) { bezier(in, Width::whole, From::position); }
    void polyBezierTo16(In& in) { bezier(in, Width::half, From::position); }
    void polyPolygon(In& in) { polyPoly(in, Width::whole, true); }
    void polyPolygon16(In& in) { polyPoly(in, Width::half, true); }
    void polyPolyline(In& in) { polyPoly(in, Width::whole, false); }
    void polyPolyline16(In& in) { polyPoly(in, Width::half, false); }
    void polyDraw(In& in) { drawKinds(in, Width::whole); }
    void polyDraw16(In& in) { drawKinds(in, Width::half); }
    void poly(In& in, Width width, bool isClosed);
    void polyTo(In& in, Width width);
    void bezier(In& in, Width width, From from);
    void polyPoly(In& in, Width width, bool isClosed);
    void drawKinds(In& in, Width width);

    // --- paths and clipping ---------------------------------------------------------------------
    void beginPath(In&) { dc_.beginPath(); }
    void endPath(In&) { dc_.endPath(); }
    void abortPath(In&) { dc_.abortPath(); }
    void closeFigure(In&) { dc_.closeFigure(); }
    void fillPath(In&) { dc_.drawPath(true, false); }
    void strokeAndFillPath(In&) { dc_.drawPath(true, true); }
    void strokePath(In&) { dc_.drawPath(false, true); }
    void selectClipPath(In& in);
    void excludeClipRect(In& in) { dc_.clip(box(in), Clip::exclude); }
    void intersectClipRect(In& in) { dc_.clip(box(in), Clip::intersect); }
    void extSelectClipRgn(In& in);
    void fillRgn(In& in);
    void paintRgn(In& in);

    // --- objects --------------------------------------------------------------------------------
    void selectObject(In& in);
    void deleteObject(In& in) { objects_.remove(in.u32()); }
    void createPen(In& in);
    void extCreatePen(In& in);
    void createBrush(In& in);
    void createPatternBrush(In& in);
    void createFont(In& in);

    // --- text and pictures ----------------------------------------------------------------------
    void extTextOutA(In& in) { extTextOut(in, 1); }
    void extTextOutW(In& in) { extTextOut(in, 2); }
    void extTextOut(In& in, std::size_t letterSize);
    void smallTextOut(In& in);
    void bitBlt(In& in) { blockTransfer(in, false); }
    void stretchBlt(In& in) { blockTransfer(in, true); }
    void alphaBlend(In& in);
    void blockTransfer(In& in, bool hasSourceSize);
    BitmapTransfer diBits(In& in);
    void stretchDiBits(In& in);
    void setDiBitsToDevice(In& in);
    QImage bitmap(In& in);

    static QPointF point(In& in, Width width = Width::whole);
    static QSizeF extentOf(In& in);
    static QRectF box(In& in);
    static double single(In& in) { return std::bit_cast<float>(in.u32()); }
    static QTransform transform(In& in);
    static std::vector<QPointF> points(In& in, Width width, std::size_t count);
    static LogicalRegion region(In& in);
    static QString letters(In& in, std::size_t count, std::size_t letterSize);

    word::ByteView file_;
    ReferenceDevice device_;
    DeviceContext dc_;
    ObjectTable objects_;
    std::uint32_t mapMode_ = 1;
};

} // namespace qvnd::drawing
