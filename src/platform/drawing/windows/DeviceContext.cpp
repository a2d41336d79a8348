#include "platform/drawing/windows/DeviceContext.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace qvnd::drawing {

namespace {

constexpr double farAway = 20'000;      // painter's units
constexpr double thinnest = 0.6;        // painter's units
constexpr double longestDashed = 4'000; // painter's units; a longer line is drawn without dashes
constexpr int mostSaves = 1'000;
constexpr int mostClipElements = 4'000;
constexpr int letterUnits = 64; // pixels of the font that is then scaled to its size

// Binary raster operations ([MS-WMF] 2.1.1.2).
constexpr unsigned ropBlack = 1;
constexpr unsigned ropMaskPen = 9;
constexpr unsigned ropNothing = 11;
constexpr unsigned ropMergePen = 15;
constexpr unsigned ropWhite = 16;

// Ternary raster operations ([MS-WMF] 2.1.1.31).
constexpr std::uint32_t blackness = 0x00000042;
constexpr std::uint32_t whiteness = 0x00FF0062;
constexpr std::uint32_t patternCopy = 0x00F00021;
constexpr std::uint32_t destinationInvert = 0x00550009;
constexpr std::uint32_t patternInvert = 0x005A0049;
constexpr std::uint32_t sourceAnd = 0x008800C6;
constexpr std::uint32_t sourcePaint = 0x00EE0086;
constexpr std::uint32_t sourceInvert = 0x00660046;
constexpr std::uint32_t notSourceCopy = 0x00330008;
constexpr std::uint32_t nothing = 0x00AA0029;

// Text alignment ([MS-WMF] 2.1.2.3).
constexpr unsigned updatePosition = 1;
constexpr unsigned alignRight = 2;
constexpr unsigned alignCenter = 6;
constexpr unsigned alignBottom = 8;
constexpr unsigned alignBaseline = 24;

double tamed(double value) {
    return std::isfinite(value) ? std::clamp(value, -farAway, farAway) : 0;
}

double length(QPointF vector) { return std::hypot(vector.x(), vector.y()); }

double ratio(double part, double whole) { return whole == 0 ? 1 : part / whole; }

QPainter::CompositionMode modeOf(std::uint32_t rasterOperation) {
    switch (rasterOperation) {
    case sourceAnd:
        return QPainter::CompositionMode_Multiply;
    case sourcePaint:
        return QPainter::CompositionMode_Screen;
    case sourceInvert:
    case patternInvert:
    case destinationInvert:
        return QPainter::CompositionMode_Difference;
    default:
        return QPainter::CompositionMode_SourceOver;
    }
}

bool usesNoSource(std::uint32_t rasterOperation) {
    return rasterOperation == blackness || rasterOperation == whiteness ||
           rasterOperation == patternCopy || rasterOperation == patternInvert ||
           rasterOperation == destinationInvert || rasterOperation == nothing;
}

QFont fontOf(const LogicalFont& logical) {
    QFont font;
    const QString face = logical.face.startsWith(u'@') ? logical.face.mid(1) : logical.face;
    if (!face.isEmpty()) {
        font.setFamily(face);
    }
    font.setPixelSize(letterUnits);
    font.setWeight(static_cast<QFont::Weight>(std::clamp(logical.weight, 1, 1000)));
    font.setItalic(logical.italic);
    font.setUnderline(logical.underline);
    font.setStrikeOut(logical.strikeOut);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace

DeviceContext::DeviceContext(QPainter& painter, const QTransform& onPainter, const QRectF& target)
    : painter_(painter), onPainter_(onPainter), target_(target) {
    painter_.save();
    painter_.setClipRect(target_, Qt::IntersectClip);
    clipOfPainter_ = painter_.clipPath();
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                            QPainter::SmoothPixmapTransform);
}

DeviceContext::~DeviceContext() { painter_.restore(); }

QTransform DeviceContext::toDevice() const {
    double x = ratio(state.viewportExtent.width(), state.windowExtent.width());
    double y = ratio(state.viewportExtent.height(), state.windowExtent.height());
    if (state.isIsotropic) {
        const double both = std::min(std::abs(x), std::abs(y));
        x = std::copysign(both, x);
        y = std::copysign(both, y);
    }
    const QTransform page(x, 0, 0, y, state.viewportOrigin.x() - state.windowOrigin.x() * x,
                          state.viewportOrigin.y() - state.windowOrigin.y() * y);
    return state.world * page;
}

void DeviceContext::save() {
    if (saved_.size() < mostSaves) {
        saved_.push_back(state);
    }
}

void DeviceContext::restore(int which) {
    const auto count = static_cast<int>(saved_.size());
    const int index = which < 0 ? count + which : which - 1;
    if (which == 0 || index < 0 || index >= count) {
        return;
    }
    state = saved_[static_cast<std::size_t>(index)];
    saved_.resize(static_cast<std::size_t>(index));
    applyClip();
}

void DeviceContext::select(const LogicalObject& object) {
    if (const auto* pen = std::get_if<LogicalPen>(&object)) {
        state.pen = *pen;
    } else if (const auto* brush = std::get_if<QBrush>(&object)) {
        state.brush = *brush;
    } else if (const auto* font = std::get_if<LogicalFont>(&object)) {
        state.font = *font;
    } else if (const auto* region = std::get_if<LogicalRegion>(&object)) {
        clip(*region, Clip::replace);
    }
}

QPainterPath DeviceContext::mapped(const QPainterPath& logical) const {
    QPainterPath path = onPainter().map(logical);
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element at = path.elementAt(i);
        if (const QPointF place(tamed(at.x), tamed(at.y)); place != QPointF(at)) {
            path.setElementPositionAt(i, place.x(), place.y());
        }
    }
    path.setFillRule(state.fillRule);
    return path;
}

QPen DeviceContext::painterPen() const {
    QColor color = state.pen.color;
    if (state.rasterOperation2 == ropBlack || state.rasterOperation2 == ropWhite) {
        color = state.rasterOperation2 == ropBlack ? Qt::black : Qt::white;
    }
    const double scale = std::sqrt(std::abs(onPainter().determinant()));
    QPen pen(color, std::max(tamed(state.pen.width * scale), thinnest), state.pen.style);
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(state.pen.style == Qt::SolidLine ? Qt::RoundCap : Qt::FlatCap);
    return pen;
}

// A hatch keeps the colour of the background in its gaps.
QBrush DeviceContext::painterBrush(const QBrush& brush) const {
    if (state.rasterOperation2 == ropBlack || state.rasterOperation2 == ropWhite) {
        return brush.style() == Qt::NoBrush
                   ? brush
                   : QBrush(state.rasterOperation2 == ropBlack ? Qt::black : Qt::white);
    }
    return brush;
}

// False when nothing is to be drawn.
bool DeviceContext::prepare(Shape shape) {
    if (state.rasterOperation2 == ropNothing) {
        return false;
    }
    painter_.setCompositionMode(
        state.rasterOperation2 == ropMaskPen    ? QPainter::CompositionMode_Darken
        : state.rasterOperation2 == ropMergePen ? QPainter::CompositionMode_Lighten
                                                : QPainter::CompositionMode_SourceOver);
    painter_.setPen(painterPen());
    painter_.setBrush(shape == Shape::filled ? painterBrush(state.brush) : QBrush(Qt::NoBrush));
    return true;
}

void DeviceContext::lineTo(QPointF end) {
    QPainterPath line(state.position);
    line.lineTo(end);
    draw(line, Shape::outline);
    state.position = end;
}

void DeviceContext::draw(const QPainterPath& path, Shape shape) {
    const QPainterPath place = mapped(path);
    if (pathIsOpen_) {
        if (shape == Shape::outline && path_.elementCount() > 0 && place.elementCount() > 0 &&
            path_.currentPosition() == QPointF(place.elementAt(0))) {
            path_.connectPath(place);
        } else {
            path_.addPath(place);
        }
        return;
    }
    if (!prepare(shape)) {
        return;
    }
    if (shape == Shape::filled && state.isOpaque && state.brush.style() >= Qt::HorPattern &&
        state.brush.style() <= Qt::DiagCrossPattern) {
        painter_.fillPath(place, state.backColor);
    }
    if (place.boundingRect().width() + place.boundingRect().height() > longestDashed) {
        QPen pen = painter_.pen();
        pen.setStyle(pen.style() == Qt::NoPen ? Qt::NoPen : Qt::SolidLine);
        painter_.setPen(pen);
    }
    painter_.drawPath(place);
}

void DeviceContext::fillRegion(const LogicalRegion& region, const QBrush& brush) {
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter_.fillPath(onPainter_.map(region.path), painterBrush(brush));
}

void DeviceContext::fillRect(const QRectF& logical, std::uint32_t rasterOperation) {
    if (rasterOperation == nothing) {
        return;
    }
    QBrush brush = state.brush;
    if (rasterOperation == blackness || rasterOperation == whiteness) {
        brush = rasterOperation == blackness ? Qt::black : Qt::white;
    } else if (rasterOperation == destinationInvert) {
        brush = Qt::white;
    }
    QPainterPath path;
    path.addRect(logical);
    painter_.setCompositionMode(modeOf(rasterOperation));
    painter_.fillPath(mapped(path), brush);
}

void DeviceContext::drawImage(const BitmapTransfer& transfer) {
    if (usesNoSource(transfer.rasterOperation)) {
        fillRect(transfer.target, transfer.rasterOperation);
        return;
    }
    if (transfer.image.isNull()) {
        return;
    }
    QImage image = transfer.image;
    if (transfer.rasterOperation == notSourceCopy) {
        image.invertPixels();
    }
    const QTransform onto = onPainter();
    const QPointF from = onto.map(transfer.target.topLeft());
    const QPointF to = onto.map(transfer.target.bottomRight());
    const QRectF place(QPointF(tamed(from.x()), tamed(from.y())),
                       QPointF(tamed(to.x()), tamed(to.y())));
    image = image.mirrored(place.width() < 0, place.height() < 0);
    QRectF source = transfer.source;
    if (place.width() < 0) {
        source.moveLeft(image.width() - source.right());
    }
    if (place.height() < 0) {
        source.moveTop(image.height() - source.bottom());
    }
    painter_.setCompositionMode(modeOf(transfer.rasterOperation));
    painter_.setOpacity(transfer.opacity);
    painter_.drawImage(place.normalized(), image, source);
    painter_.setOpacity(1);
}

void DeviceContext::fillBackground(const QRectF& logical) {
    QPainterPath path;
    path.addRect(logical);
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter_.fillPath(mapped(path), state.backColor);
}

// The letters stand upright whatever way the axes go, and are as wide as the file says, whatever
// font stands in for the one it names.
void DeviceContext::drawText(QPointF at, const QString& text, std::span<const double> advances) {
    const QTransform onto = onPainter();
    const double along = length(onto.map(QPointF(1, 0)) - onto.map(QPointF()));
    const double upright = length(onto.map(QPointF(0, 1)) - onto.map(QPointF()));
    const QFont font = fontOf(state.font);
    const QFontMetricsF metrics(font);
    const double height = state.font.height == 0 ? -12 / upright : state.font.height;
    const double unit = std::abs(height) / (height > 0 ? metrics.height() : letterUnits);
    const bool updates = state.textAlign & updatePosition;
    const QPointF place = onto.map(updates ? state.position : at);
    if (unit * upright <= 0 || !std::isfinite(unit) || std::abs(place.x()) > farAway ||
        std::abs(place.y()) > farAway) {
        return;
    }
    const bool hasAdvances = static_cast<qsizetype>(advances.size()) >= text.size();
    const double width =
        hasAdvances ? std::accumulate(advances.begin(), advances.begin() + text.size(), 0.0) / unit
                    : metrics.horizontalAdvance(text);
    const unsigned horizontal = state.textAlign & alignCenter;
    const double left = horizontal == alignCenter  ? -width / 2
                        : horizontal == alignRight ? -width
                                                   : 0;
    const unsigned vertical = state.textAlign & alignBaseline;
    const double base = vertical == alignBaseline ? 0
                        : vertical == alignBottom ? -metrics.descent()
                                                  : metrics.ascent();

    painter_.save();
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter_.translate(place);
    const QPointF direction = state.world.map(QPointF(1, 0)) - state.world.map(QPointF());
    painter_.rotate(std::atan2(direction.y(), direction.x()) * 180 / std::numbers::pi -
                    state.font.escapement / 10);
    painter_.scale(std::min(unit * along, farAway), std::min(unit * upright, farAway));
    if (state.isOpaque) {
        painter_.fillRect(QRectF(left, base - metrics.ascent(), width, metrics.height()),
                          state.backColor);
    }
    painter_.setFont(font);
    painter_.setPen(state.textColor);
    if (hasAdvances) {
        double x = left;
        for (qsizetype i = 0; i < text.size(); ++i) {
            const qsizetype units = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
            painter_.drawText(QPointF(x, base), text.mid(i, units));
            for (qsizetype unitAt = 0; unitAt < units; ++unitAt) {
                x += advances[static_cast<std::size_t>(i + unitAt)] / unit;
            }
            i += units - 1;
        }
    } else {
        painter_.drawText(QPointF(left, base), text);
    }
    painter_.restore();
    if (updates) {
        state.position += QPointF(width * unit, 0);
    }
}

void DeviceContext::beginPath() {
    path_ = QPainterPath();
    pathIsOpen_ = true;
}

void DeviceContext::abortPath() {
    path_ = QPainterPath();
    pathIsOpen_ = false;
}

void DeviceContext::closeFigure() {
    if (pathIsOpen_) {
        path_.closeSubpath();
    }
}

void DeviceContext::drawPath(bool fill, bool stroke) {
    if (prepare(fill ? Shape::filled : Shape::outline)) {
        path_.setFillRule(state.fillRule);
        if (!stroke) {
            painter_.setPen(Qt::NoPen);
        }
        painter_.drawPath(path_);
    }
    path_ = QPainterPath();
}

void DeviceContext::clipToPath(Clip how) {
    path_.setFillRule(state.fillRule);
    setClip(path_, how);
    path_ = QPainterPath();
}

void DeviceContext::clip(const QRectF& logical, Clip how) {
    QPainterPath path;
    path.addRect(logical);
    setClip(mapped(path), how);
}

void DeviceContext::clip(const LogicalRegion& region, Clip how) {
    setClip(onPainter_.map(region.path), how);
}

void DeviceContext::clearClip() {
    state.clip.reset();
    applyClip();
}

// A clip of too many edges stays as it is: combining them takes ever longer.
void DeviceContext::setClip(const QPainterPath& path, Clip how) {
    if (path.elementCount() > mostClipElements ||
        (state.clip && how != Clip::replace && state.clip->elementCount() > mostClipElements)) {
        return;
    }
    QPainterPath all;
    all.addRect(target_);
    const QPainterPath before = state.clip.value_or(all);
    state.clip = how == Clip::replace     ? path
                 : how == Clip::intersect ? before.intersected(path)
                                          : before.subtracted(path);
    applyClip();
}

void DeviceContext::applyClip() {
    painter_.setClipPath(clipOfPainter_);
    if (state.clip) {
        painter_.setClipPath(*state.clip, Qt::IntersectClip);
    }
}

} // namespace qvnd::drawing
