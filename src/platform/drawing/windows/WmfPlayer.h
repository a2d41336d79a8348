#pragma once

#include "platform/drawing/windows/DeviceContext.h"
#include "platform/drawing/windows/MetafileObjects.h"

#include <unordered_map>

class QPainter;

namespace qvnd::drawing {

// Paints a Windows metafile ([MS-WMF]), placeable or plain, record by record. Parameters stand in a
// record in reverse order of their call.
class WmfPlayer {
public:
    // FormatError when the file is too short for its header. Painter and file outlive the object.
    WmfPlayer(word::ByteView file, QPainter& painter, const QRectF& target);
    // Records that are not known or damaged are passed over; the playing ends where the records no
    // longer line up.
    void play();

private:
    using In = word::LittleEndianReader;
    using Handler = void (WmfPlayer::*)(In&);
    static const std::unordered_map<unsigned, Handler>& handlers();

    bool readPlaceable();
    void findWindow();

    void setBkColor(In& in) { dc_.state.backColor = colorOf(in.u32()); }
    void setBkMode(In& in) { dc_.state.isOpaque = in.u16() == 2; }
    void setRop2(In& in) { dc_.state.rasterOperation2 = in.u16(); }
    void setTextColor(In& in) { dc_.state.textColor = colorOf(in.u32()); }
    void setTextAlign(In& in) { dc_.state.textAlign = in.u16(); }
    void setPolyFillMode(In& in) {
        dc_.state.fillRule = in.u16() == 2 ? Qt::WindingFill : Qt::OddEvenFill;
    }
    void setWindowOrg(In& in) { dc_.state.windowOrigin = point(in); }
    void offsetWindowOrg(In& in) { dc_.state.windowOrigin += point(in); }
    void setWindowExt(In& in);
    void scaleWindowExt(In& in);

    void moveTo(In& in) { dc_.state.position = point(in); }
    void lineTo(In& in) { dc_.lineTo(point(in)); }
    void rectangle(In& in);
    void roundRect(In& in);
    void ellipse(In& in);
    void arc(In& in) { arcLike(in, ArcKind::open); }
    void chord(In& in) { arcLike(in, ArcKind::chord); }
    void pie(In& in) { arcLike(in, ArcKind::pie); }
    void arcLike(In& in, ArcKind kind);
    void polygon(In& in);
    void polyLine(In& in);
    void polyPolygon(In& in);
    void setPixel(In& in);
    void patBlt(In& in);

    void textOut(In& in);
    void extTextOut(In& in);

    void dibBitBlt(In& in);
    void dibStretchBlt(In& in);
    void stretchDib(In& in);
    void setDibToDev(In& in);

    void createPen(In& in);
    void createBrush(In& in);
    void createFont(In& in);
    void createPatternBrush(In& in);
    void createRegion(In& in);
    void createOther(In&) { objects_.add({}); }
    void selectObject(In& in) { dc_.select(objects_.at(in.u16())); }
    void deleteObject(In& in) { objects_.remove(in.u16()); }
    void selectClipRegion(In& in);
    void fillRegion(In& in);
    void paintRegion(In& in);

    void intersectClipRect(In& in) { dc_.clip(box(in), DeviceContext::Clip::intersect); }
    void excludeClipRect(In& in) { dc_.clip(box(in), DeviceContext::Clip::exclude); }
    void saveDc(In&) { dc_.save(); }
    void restoreDc(In& in) { dc_.restore(in.i16()); }

    static QPointF point(In& in);
    static QPointF forwardPoint(In& in);
    static QRectF box(In& in);
    static std::vector<QPointF> points(In& in, std::size_t count);
    QString decoded(word::ByteView letters) const;
    static std::vector<double> byUnits(const QString& text, const std::vector<double>& byBytes);

    word::ByteView file_;
    DeviceContext dc_;
    ObjectTable objects_;
};

} // namespace qvnd::drawing
