#include "platform/drawing/metafile/DeviceContext.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace qvnd::drawing::metafile {

namespace {

constexpr std::size_t deepestState = 256;
constexpr int deepestClip = 32;        // paths within each other; what lies deeper does not clip
constexpr double usualFontHeight = 12; // pixels

double lengthOf(VectorPoint p) { return std::hypot(p.x, p.y); }

bool isSound(VectorPoint p) {
    constexpr double farthest = 1e9;
    return std::abs(p.x) <= farthest && std::abs(p.y) <= farthest; // false for what is no number
}

double ratio(double to, double from) { return from != 0 ? to / from : 1; }

} // namespace

PlaneMap PlaneMap::then(const PlaneMap& next) const {
    const VectorPoint x = next.turned({a, b});
    const VectorPoint y = next.turned({c, d});
    const VectorPoint origin = next.at({e, f});
    return {x.x, x.y, y.x, y.y, origin.x, origin.y};
}

DeviceContext::DeviceContext(VectorPoint unitsPerMillimetre)
    : unitsPerMillimetre_(unitsPerMillimetre) {}

void DeviceContext::save() {
    if (saved_.size() < deepestState) {
        saved_.push_back(state_);
    }
}

void DeviceContext::restore(int level) {
    const auto depth = static_cast<int>(saved_.size());
    const int at = level < 0 ? depth + level : level - 1;
    if (at >= 0 && at < depth) {
        state_ = saved_[static_cast<std::size_t>(at)];
        saved_.resize(static_cast<std::size_t>(at));
    }
}

void DeviceContext::select(const GraphicsObject& object) {
    if (const auto* pen = std::get_if<PenObject>(&object)) {
        state_.pen = *pen;
    } else if (const auto* brush = std::get_if<BrushObject>(&object)) {
        state_.brush = *brush;
    } else if (const auto* font = std::get_if<FontObject>(&object)) {
        state_.font = *font;
    }
}

// From the window to the viewport, behind the transformation of the world. Modes with fixed units
// count upwards ([MS-WMF] 2.1.1.16).
PlaneMap DeviceContext::map() const {
    constexpr unsigned pixels = 1;
    constexpr unsigned twips = 6;
    constexpr unsigned isotropic = 7;
    constexpr double millimetres[] = {0.1, 0.01, 0.254, 0.0254, 25.4 / 1440};
    const Mapping& m = state_.mapping;
    double x = 1;
    double y = 1;
    if (m.mode > pixels && m.mode <= twips) {
        x = millimetres[m.mode - 2] * unitsPerMillimetre_.x;
        y = -millimetres[m.mode - 2] * unitsPerMillimetre_.y;
    } else if (m.mode > twips) {
        x = ratio(m.viewportExtent.x, m.windowExtent.x);
        y = ratio(m.viewportExtent.y, m.windowExtent.y);
        if (m.mode == isotropic) {
            const double both = std::min(std::abs(x), std::abs(y));
            x = std::copysign(both, x);
            y = std::copysign(both, y);
        }
    }
    return m.world.then({x, 0, 0, y, m.viewportOrigin.x - m.windowOrigin.x * x,
                         m.viewportOrigin.y - m.windowOrigin.y * y});
}

double DeviceContext::lengthScale() const {
    const PlaneMap m = map();
    return std::sqrt(std::abs(m.a * m.d - m.b * m.c));
}

VectorPen DeviceContext::devicePen(const PenObject& object) const {
    VectorPen pen = *object.pen;
    const double width = pen.width * lengthScale();
    pen.width = object.isCosmetic || !isSound({width, 0}) ? 0 : width;
    return pen;
}

void DeviceContext::add(decltype(VectorElement::what) what) {
    elements_.push_back({std::move(what), state_.clip});
}

void DeviceContext::addFigure(VectorPath path, bool fills, bool strokes) {
    if (path.isEmpty() || !std::all_of(path.points.begin(), path.points.end(), isSound)) {
        return;
    }
    if (inPath_) {
        path_.steps.insert(path_.steps.end(), path.steps.begin(), path.steps.end());
        path_.points.insert(path_.points.end(), path.points.begin(), path.points.end());
        return;
    }
    VectorShape shape;
    shape.winding = state_.winding;
    if (fills) {
        shape.fill = state_.brush.colour;
    }
    if (strokes && state_.pen.pen) {
        shape.pen = devicePen(state_.pen);
    }
    if (shape.fill || shape.pen) {
        shape.path = std::move(path);
        add(std::move(shape));
    }
}

void DeviceContext::moveTo(VectorPoint to) {
    state_.current = to;
    if (inPath_ && isSound(toDevice(to))) {
        path_.moveTo(toDevice(to));
    }
}

void DeviceContext::lineTo(VectorPoint to) { polylineTo({&to, 1}); }

void DeviceContext::polylineTo(std::span<const VectorPoint> points) {
    if (points.empty()) {
        return;
    }
    VectorPath path;
    if (!inPath_ || path_.isEmpty()) {
        path.moveTo(toDevice(state_.current));
    }
    for (const VectorPoint& point : points) {
        path.steps.push_back(VectorPath::Step::line);
        path.points.push_back(toDevice(point));
    }
    state_.current = points.back();
    addFigure(std::move(path), false, true);
}

void DeviceContext::bezierTo(std::span<const VectorPoint> points) {
    if (points.size() < 3) {
        return;
    }
    VectorPath path;
    if (!inPath_ || path_.isEmpty()) {
        path.moveTo(toDevice(state_.current));
    }
    for (std::size_t i = 0; i + 2 < points.size(); i += 3) {
        path.steps.push_back(VectorPath::Step::curve);
        path.points.insert(path.points.end(),
                           {toDevice(points[i]), toDevice(points[i + 1]), toDevice(points[i + 2])});
        state_.current = points[i + 2];
    }
    addFigure(std::move(path), false, true);
}

void DeviceContext::polyline(std::span<const VectorPoint> points) {
    VectorPath path;
    for (const VectorPoint& point : points) {
        path.lineTo(toDevice(point));
    }
    addFigure(std::move(path), false, true);
}

void DeviceContext::bezier(std::span<const VectorPoint> points) {
    VectorPath path;
    for (std::size_t i = 0; i < points.size() && (i == 0 || i + 2 < points.size());
         i += i == 0 ? 1 : 3) {
        if (i == 0) {
            path.moveTo(toDevice(points[0]));
        } else {
            path.curveTo(toDevice(points[i]), toDevice(points[i + 1]), toDevice(points[i + 2]));
        }
    }
    addFigure(std::move(path), false, true);
}

void DeviceContext::polygons(const std::vector<std::span<const VectorPoint>>& figures) {
    VectorPath path;
    for (const auto& figure : figures) {
        for (std::size_t i = 0; i < figure.size(); ++i) {
            if (i == 0) {
                path.moveTo(toDevice(figure[i]));
            } else {
                path.lineTo(toDevice(figure[i]));
            }
        }
        path.close();
    }
    addFigure(std::move(path), true, true);
}

void DeviceContext::rectangle(VectorPoint from, VectorPoint to) {
    const VectorPoint corners[] = {from, {to.x, from.y}, to, {from.x, to.y}};
    polygons({corners});
}

void DeviceContext::fillRectangle(VectorPoint from, VectorPoint to, std::uint32_t colour) {
    const BrushObject brush = std::exchange(state_.brush, BrushObject{colour});
    const PenObject pen = std::exchange(state_.pen, PenObject{});
    rectangle(from, to);
    state_.brush = brush;
    state_.pen = pen;
}

void DeviceContext::roundRectangle(VectorPoint from, VectorPoint to, VectorPoint corner) {
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
    const auto p = [&](double x, double y) { return toDevice({x, y}); };
    path.moveTo(p(left + rx, top));
    path.lineTo(p(right - rx, top));
    path.curveTo(p(right - kx, top), p(right, top + ky), p(right, top + ry));
    path.lineTo(p(right, bottom - ry));
    path.curveTo(p(right, bottom - ky), p(right - kx, bottom), p(right - rx, bottom));
    path.lineTo(p(left + rx, bottom));
    path.curveTo(p(left + kx, bottom), p(left, bottom - ky), p(left, bottom - ry));
    path.lineTo(p(left, top + ry));
    path.curveTo(p(left, top + ky), p(left + kx, top), p(left + rx, top));
    path.close();
    addFigure(std::move(path), true, true);
}

void DeviceContext::ellipse(VectorPoint from, VectorPoint to) {
    roundRectangle(from, to, {to.x - from.x, to.y - from.y});
}

// From the ray to `start` to the ray to `end`, in parts of at most a quarter.
void DeviceContext::arc(VectorPoint from, VectorPoint to, VectorPoint start, VectorPoint end,
                        Arc kind) {
    const VectorPoint centre{(from.x + to.x) / 2, (from.y + to.y) / 2};
    const double rx = std::abs(to.x - from.x) / 2;
    const double ry = std::abs(to.y - from.y) / 2;
    if (rx == 0 || ry == 0) {
        return;
    }
    const double begin = std::atan2((start.y - centre.y) / ry, (start.x - centre.x) / rx);
    double turn = std::atan2((end.y - centre.y) / ry, (end.x - centre.x) / rx) - begin;
    // Angles grow clockwise where y grows downwards.
    const bool isClockwise = state_.arcsClockwise != (map().d < 0);
    if (isClockwise && turn <= 0) {
        turn += 2 * std::numbers::pi;
    } else if (!isClockwise && turn >= 0) {
        turn -= 2 * std::numbers::pi;
    }
    const int parts =
        std::max(1, static_cast<int>(std::ceil(std::abs(turn) / (std::numbers::pi / 2))));
    const double step = turn / parts;
    const double pull = 4.0 / 3 * std::tan(step / 4);
    const auto on = [&](double angle, double along) {
        return VectorPoint{centre.x + rx * (std::cos(angle) - along * std::sin(angle)),
                           centre.y + ry * (std::sin(angle) + along * std::cos(angle))};
    };
    VectorPath path;
    if (kind == Arc::pie) {
        path.moveTo(toDevice(centre));
    }
    if (kind == Arc::joined) {
        path.moveTo(toDevice(state_.current));
    }
    path.lineTo(toDevice(on(begin, 0)));
    for (int i = 0; i < parts; ++i) {
        const double angle = begin + i * step;
        path.curveTo(toDevice(on(angle, pull)), toDevice(on(angle + step, -pull)),
                     toDevice(on(angle + step, 0)));
    }
    if (kind == Arc::chord || kind == Arc::pie) {
        path.close();
    }
    if (kind == Arc::joined) {
        state_.current = on(begin + turn, 0);
    }
    addFigure(std::move(path), kind == Arc::chord || kind == Arc::pie, true);
}

void DeviceContext::beginPath() {
    path_ = {};
    inPath_ = true;
}

void DeviceContext::closeFigure() {
    if (inPath_) {
        path_.close();
    }
}

void DeviceContext::drawPath(bool fills, bool strokes) {
    inPath_ = false;
    addFigure(std::exchange(path_, {}), fills, strokes);
}

void DeviceContext::dropPath() {
    inPath_ = false;
    path_ = {};
}

void DeviceContext::setClip(VectorPath path, ClipMode mode) {
    auto around = mode == ClipMode::intersect ? state_.clip : nullptr;
    const int depth = around ? around->depth + 1 : 1;
    const bool isUsable = !path.isEmpty() && depth <= deepestClip &&
                          std::all_of(path.points.begin(), path.points.end(), isSound);
    if (isUsable) {
        state_.clip = std::make_shared<const VectorClip>(
            VectorClip{std::move(path), state_.winding, std::move(around), depth});
    }
}

void DeviceContext::clipToPath(ClipMode mode) {
    inPath_ = false;
    setClip(std::exchange(path_, {}), mode);
}

void DeviceContext::clipToRectangle(VectorPoint from, VectorPoint to) {
    VectorPath path;
    for (const VectorPoint& corner : {from, {to.x, from.y}, to, {from.x, to.y}}) {
        path.lineTo(toDevice(corner));
    }
    path.close();
    setClip(std::move(path), ClipMode::intersect);
}

void DeviceContext::clipToDeviceRectangles(std::span<const VectorPoint> corners, ClipMode mode) {
    VectorPath path;
    for (std::size_t i = 0; i + 1 < corners.size(); i += 2) {
        const VectorPoint from = corners[i];
        const VectorPoint to = corners[i + 1];
        path.moveTo(from);
        path.lineTo({to.x, from.y});
        path.lineTo(to);
        path.lineTo({from.x, to.y});
        path.close();
    }
    setClip(std::move(path), mode);
}

void DeviceContext::text(VectorPoint at, std::u16string text, std::span<const double> advances) {
    constexpr unsigned movesOn = 1;
    constexpr unsigned across = 6;
    constexpr unsigned down = 24;
    const PlaneMap map = this->map();
    const FontObject& font = state_.font;
    const VectorPoint place = (state_.textAlign & movesOn) != 0 ? state_.current : at;
    const VectorPoint along = map.turned({std::cos(font.angle), -std::sin(font.angle)});
    const double upright = lengthOf(map.turned({0, 1}));
    const double height = std::abs(font.height) * upright;
    VectorText result;
    result.at = map.at(place);
    result.across = (state_.textAlign & across) == 6   ? VectorText::Across::centre
                    : (state_.textAlign & across) == 2 ? VectorText::Across::right
                                                       : VectorText::Across::left;
    result.down = (state_.textAlign & down) == 24  ? VectorText::Down::baseline
                  : (state_.textAlign & down) == 8 ? VectorText::Down::bottom
                                                   : VectorText::Down::top;
    result.text = std::move(text);
    double length = 0;
    for (const double advance : advances) {
        result.advances.push_back(advance * lengthOf(along));
        length += advance;
    }
    result.font = font.name;
    result.bold = font.bold;
    result.italic = font.italic;
    result.underlined = font.underlined;
    result.struckOut = font.struckOut;
    result.size = height > 0 ? height : usualFontHeight;
    result.isLineHeight = font.height > 0;
    // A drawing that counts upwards turns no letters over.
    result.angle = map.a * map.d - map.b * map.c >= 0 ? std::atan2(-along.y, along.x) : font.angle;
    result.colour = state_.textColour;
    if ((state_.textAlign & movesOn) != 0) {
        state_.current.x += length;
    }
    const bool isWhole = isSound(result.at) && isSound({result.size, result.angle}) &&
                         isSound({length * lengthOf(along), 0});
    if (!result.text.empty() && isWhole && !inPath_) {
        add(std::move(result));
    }
}

void DeviceContext::image(PixelImage pixels, VectorPoint from, VectorPoint extent,
                          VectorBlend blend) {
    const PlaneMap map = this->map();
    const VectorPoint corner = map.at(from);
    if (isSound(corner) && isSound(map.turned(extent))) {
        add(VectorImage{std::move(pixels), corner, map.turned({extent.x, 0}),
                        map.turned({0, extent.y}), blend});
    }
}

std::uint32_t colourOfRecord(std::uint32_t bgr) {
    return ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
}

PenObject penOf(unsigned style, double width, std::uint32_t bgr) {
    constexpr unsigned none = 5;
    constexpr unsigned endsMask = 0xF00;
    constexpr unsigned geometric = 0x10000;
    const unsigned line = style & 0xF;
    if (line == none) {
        return {};
    }
    VectorPen pen;
    pen.colour = colourOfRecord(bgr);
    pen.width = std::abs(width);
    pen.isRound = (style & endsMask) == 0;
    if (line >= 1 && line <= 4) {
        const std::vector<double> patterns[] = {
            {6, 3}, {2, 2}, {5, 2, 1, 2}, {5, 2, 1, 2, 1, 2}}; // dash, dot, and both
        pen.dashes = patterns[line - 1];
    }
    return {pen, width == 0 || ((style & geometric) == 0 && width <= 1)};
}

BrushObject brushOf(unsigned style, std::uint32_t bgr) {
    constexpr unsigned solid = 0;
    constexpr unsigned none = 1;
    constexpr unsigned hatched = 2;
    constexpr std::uint32_t grey = 0xC0C0C0;
    const std::uint32_t colour = colourOfRecord(bgr);
    if (style == none) {
        return {};
    }
    if (style == hatched) { // three parts of paper
        return {((colour >> 2) & 0x3F3F3F) + 0xC0C0C0};
    }
    return {style == solid ? colour : grey};
}

} // namespace qvnd::drawing::metafile
