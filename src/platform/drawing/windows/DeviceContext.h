#pragma once

#include <QBrush>
#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QString>
#include <QTransform>

#include <optional>
#include <span>
#include <variant>
#include <vector>

class QPainter;

namespace qvnd::drawing {

// A pen, font or region of a metafile's object table; a brush is Qt's. Lengths are logical units.
struct LogicalPen {
    Qt::PenStyle style = Qt::SolidLine;
    double width = 0; // 0 is the thinnest line
    QColor color = Qt::black;
};
struct LogicalFont {
    double height = 0;     // above 0 of the cell, below 0 of the letter
    double escapement = 0; // tenths of a degree, counter-clockwise
    int weight = 400;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    unsigned charset = 0;
    QString face;
};
struct LogicalRegion {
    QPainterPath path; // device units
};
using LogicalObject = std::variant<std::monostate, LogicalPen, QBrush, LogicalFont, LogicalRegion>;

// The picture that a bitmap record brings, and the places it names.
struct BitmapTransfer {
    QImage image;
    QRectF source; // pixels from the top left
    QRectF target; // logical units; negative sizes mirror
    std::uint32_t rasterOperation = 0;
    double opacity = 1;
};

// The drawing state of a metafile, and the drawing itself ([MS-WMF] 3.1.5, [MS-EMF] 3.1.1). Logical
// units go through the world transform and the mapping of window to viewport to device units, which
// a fixed transform brings onto the painter. Coordinates far outside the picture are taken as being
// at its edge, so that no damaged file takes for ever.
class DeviceContext {
public:
    enum class Shape { outline, filled };
    enum class Clip { intersect, exclude, replace };

    // `onPainter` maps device units to the painter's; nothing is drawn outside `target`. The
    // painter outlives the object, which leaves its state as it was.
    DeviceContext(QPainter& painter, const QTransform& onPainter, const QRectF& target);
    ~DeviceContext();
    DeviceContext(const DeviceContext&) = delete;
    DeviceContext& operator=(const DeviceContext&) = delete;

    // What a save keeps and a restore brings back.
    struct State {
        LogicalPen pen;
        QBrush brush = QBrush(Qt::white);
        LogicalFont font;
        QColor textColor = Qt::black;
        QColor backColor = Qt::white;
        bool isOpaque = true;
        unsigned textAlign = 0;
        Qt::FillRule fillRule = Qt::OddEvenFill;
        unsigned rasterOperation2 = 13;
        QPointF position;
        QTransform world;
        QPointF windowOrigin;
        QSizeF windowExtent{1, 1};
        QPointF viewportOrigin;
        QSizeF viewportExtent{1, 1};
        bool isIsotropic = false;
        std::optional<QPainterPath> clip; // painter's units
    };
    State state;

    void save();
    // Below 0 counts back from the latest save, above 0 from the first; others do nothing.
    void restore(int which);

    void select(const LogicalObject& object);

    void lineTo(QPointF end);
    // Draws what is given in logical units, or takes it into the path while one is open.
    void draw(const QPainterPath& path, Shape shape);
    void fillRegion(const LogicalRegion& region, const QBrush& brush);
    void fillRect(const QRectF& logical, std::uint32_t rasterOperation);
    void drawImage(const BitmapTransfer& transfer);
    // `advances` are the widths of the letters in logical units, or none.
    void drawText(QPointF at, const QString& text, std::span<const double> advances);
    void fillBackground(const QRectF& logical);

    void beginPath();
    void endPath() { pathIsOpen_ = false; }
    void abortPath();
    void closeFigure();
    void drawPath(bool fill, bool stroke);
    void clipToPath(Clip how);

    void clip(const QRectF& logical, Clip how);
    void clip(const LogicalRegion& region, Clip how);
    void clearClip();

    // From logical to device units.
    QTransform toDevice() const;

private:
    QTransform onPainter() const { return toDevice() * onPainter_; }
    QPainterPath mapped(const QPainterPath& logical) const;
    QPen painterPen() const;
    QBrush painterBrush(const QBrush& brush) const;
    bool prepare(Shape shape);
    void setClip(const QPainterPath& path, Clip how);
    void applyClip();

    QPainter& painter_;
    QTransform onPainter_;
    QRectF target_;
    QPainterPath clipOfPainter_;
    std::vector<State> saved_;
    QPainterPath path_;
    bool pathIsOpen_ = false;
};

} // namespace qvnd::drawing
