#include "platform/drawing/metafile/DeviceContext.h"

#include "platform/drawing/metafile/CodePages.h"

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

double ratio(double to, double from) { return from != 0 ? to / from : 1; }

// False where nothing is drawn. Operations that are not named here, which depend on the bits that
// lie under them, draw as the usual one does.
bool applyRasterOperation(unsigned operation, VectorShape& shape) {
    constexpr unsigned black = 1;
    constexpr unsigned maskPen = 9;
    constexpr unsigned nothing = 11;
    constexpr unsigned mergePen = 15;
    constexpr unsigned white = 16;
    if (operation == black || operation == white) {
        const std::uint32_t colour = operation == black ? 0 : 0xFFFFFF;
        if (shape.fill || shape.tile || shape.hatch) {
            shape.fill = colour;
            shape.tile.reset();
            shape.hatch.reset();
        }
        if (shape.pen) {
            shape.pen->colour = colour;
        }
    }
    shape.blend = operation == maskPen    ? VectorBlend::darken
                  : operation == mergePen ? VectorBlend::lighten
                                          : VectorBlend::cover;
    return operation != nothing;
}

bool isSeen(const VectorShape& shape) {
    return shape.fill || shape.tile || shape.hatch || shape.pen;
}

} // namespace

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
    } else if (const auto* region = std::get_if<RegionObject>(&object)) {
        clipToRegion(*region, ClipMode::replace);
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
    return m.world.then(
        {{x, 0},
         {0, y},
         {m.viewportOrigin.x - m.windowOrigin.x * x, m.viewportOrigin.y - m.windowOrigin.y * y}});
}

VectorPen DeviceContext::devicePen(const PenObject& object) const {
    VectorPen pen = *object.pen;
    const double width = pen.width * std::sqrt(std::abs(map().determinant()));
    pen.width = object.isCosmetic || !isSound({width, 0}) ? 0 : width;
    return pen;
}

void DeviceContext::add(decltype(VectorElement::what) what) {
    elements_.push_back({std::move(what), state_.clip});
}

// The lines of a hatch stand on the background where that is opaque.
void DeviceContext::fill(VectorShape& shape, const BrushObject& brush) const {
    shape.winding = state_.winding;
    shape.fill = brush.hatch && state_.isOpaque ? state_.background : brush.colour;
    shape.tile = brush.tile;
    shape.hatch = brush.hatch;
}

void DeviceContext::addFigure(const VectorPath& logical, bool fills, bool strokes) {
    addShape(map().at(logical), fills, strokes);
}

void DeviceContext::addShape(VectorPath path, bool fills, bool strokes) {
    if (path.isEmpty() || !isSound(path)) {
        return;
    }
    if (inPath_) {
        path_.steps.insert(path_.steps.end(), path.steps.begin(), path.steps.end());
        path_.points.insert(path_.points.end(), path.points.begin(), path.points.end());
        return;
    }
    VectorShape shape;
    fill(shape, fills ? state_.brush : BrushObject());
    if (strokes && state_.pen.pen) {
        shape.pen = devicePen(state_.pen);
    }
    if (applyRasterOperation(state_.rasterOperation, shape) && isSeen(shape)) {
        shape.path = std::move(path);
        add(std::move(shape));
    }
}

void DeviceContext::addArea(VectorPath path, const BrushObject& brush, VectorBlend blend) {
    VectorShape shape;
    fill(shape, brush);
    shape.blend = blend;
    if (!path.isEmpty() && isSound(path) && isSeen(shape)) {
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

// In a bracket, what goes on where the last figure ended is part of that figure.
void DeviceContext::addContinued(VectorPath path) {
    if (inPath_ && !path_.isEmpty()) {
        path.steps.erase(path.steps.begin());
        path.points.erase(path.points.begin());
    }
    addFigure(path, false, true);
}

VectorPath DeviceContext::fromCurrent() const {
    VectorPath path;
    path.moveTo(state_.current);
    return path;
}

void DeviceContext::polylineTo(std::span<const VectorPoint> points) {
    if (points.empty()) {
        return;
    }
    VectorPath path = fromCurrent();
    for (const VectorPoint& point : points) {
        path.lineTo(point);
    }
    state_.current = points.back();
    addContinued(std::move(path));
}

void DeviceContext::bezierTo(std::span<const VectorPoint> points) {
    if (points.size() < 3) {
        return;
    }
    VectorPath path = fromCurrent();
    for (std::size_t i = 0; i + 2 < points.size(); i += 3) {
        path.curveTo(points[i], points[i + 1], points[i + 2]);
        state_.current = points[i + 2];
    }
    addContinued(std::move(path));
}

void DeviceContext::polyDraw(std::span<const VectorPoint> points,
                             std::span<const std::uint8_t> kinds) {
    constexpr unsigned closes = 1;
    constexpr unsigned curve = 4; // with the two points that follow
    constexpr unsigned move = 6;
    VectorPath path = fromCurrent();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const unsigned kind = kinds[i] & move;
        if (kind == move) {
            path.moveTo(points[i]);
        } else if (kind == curve && i + 2 < points.size()) {
            path.curveTo(points[i], points[i + 1], points[i + 2]);
            i += 2;
        } else {
            path.lineTo(points[i]);
        }
        if ((kinds[i] & closes) != 0) {
            path.close();
        }
        state_.current = points[i];
    }
    addContinued(std::move(path));
}

void DeviceContext::polyline(std::span<const VectorPoint> points) {
    addFigure(linesThrough(points), false, true);
}

void DeviceContext::bezier(std::span<const VectorPoint> points) {
    VectorPath path = linesThrough(points.first(std::min<std::size_t>(points.size(), 1)));
    for (std::size_t i = 1; i + 2 < points.size(); i += 3) {
        path.curveTo(points[i], points[i + 1], points[i + 2]);
    }
    addFigure(path, false, true);
}

void DeviceContext::polygons(const std::vector<std::span<const VectorPoint>>& figures) {
    VectorPath path;
    for (const auto& figure : figures) {
        for (std::size_t i = 0; i < figure.size(); ++i) {
            if (i == 0) {
                path.moveTo(figure[i]);
            } else {
                path.lineTo(figure[i]);
            }
        }
        path.close();
    }
    addFigure(path, true, true);
}

void DeviceContext::rectangle(VectorPoint from, VectorPoint to) {
    VectorPath path;
    addRectangle(path, from, to);
    addFigure(path, true, true);
}

void DeviceContext::roundRectangle(VectorPoint from, VectorPoint to, VectorPoint corner) {
    addFigure(roundedRectangle(from, to, corner), true, true);
}

void DeviceContext::ellipse(VectorPoint from, VectorPoint to) {
    roundRectangle(from, to, {to.x - from.x, to.y - from.y});
}

void DeviceContext::arc(VectorPoint from, VectorPoint to, VectorPoint start, VectorPoint end,
                        Arc kind) {
    const Ellipse ellipse = Ellipse::within(from, to);
    if (ellipse.rx == 0 || ellipse.ry == 0) {
        return;
    }
    const double begin = ellipse.angleOf(start);
    double turn = ellipse.angleOf(end) - begin;
    // Angles grow clockwise where y grows downwards.
    const bool isClockwise = state_.arcsClockwise != (map().down.y < 0);
    if (isClockwise && turn <= 0) {
        turn += 2 * std::numbers::pi;
    } else if (!isClockwise && turn >= 0) {
        turn -= 2 * std::numbers::pi;
    }
    addArc(ellipse, begin, turn, kind);
}

void DeviceContext::angleArc(VectorPoint centre, double radius, double start, double sweep) {
    constexpr double degree = std::numbers::pi / 180;
    if (radius > 0 && std::isfinite(start) && std::isfinite(sweep)) {
        addArc({centre, radius, radius}, -start * degree,
               -std::clamp(sweep, -360.0, 360.0) * degree, Arc::joined);
    }
}

void DeviceContext::addArc(const Ellipse& ellipse, double begin, double turn, Arc kind) {
    if (kind == Arc::joined) {
        VectorPath path = fromCurrent();
        ellipse.addArc(path, begin, turn);
        state_.current = ellipse.at(begin + turn);
        addContinued(std::move(path));
        return;
    }
    VectorPath path;
    if (kind == Arc::pie) {
        path.moveTo(ellipse.centre);
    }
    ellipse.addArc(path, begin, turn);
    const bool isArea = kind != Arc::open;
    if (isArea) {
        path.close();
    }
    addFigure(path, isArea, true);
}

// As large as a unit of the device, and as the finest line at the least.
void DeviceContext::pixel(VectorPoint at, std::uint32_t colour) {
    const VectorPoint from = toDevice(at);
    VectorShape shape;
    addRectangle(shape.path, from, {from.x + 1, from.y + 1});
    shape.fill = colour;
    shape.pen = VectorPen{colour, 0, {}, true};
    if (isSound(from)) {
        add(std::move(shape));
    }
}

void DeviceContext::fillRectangle(VectorPoint from, VectorPoint to, std::uint32_t colour) {
    fillRectangle(from, to, BrushObject{colour}, VectorBlend::cover);
}

void DeviceContext::fillRectangle(VectorPoint from, VectorPoint to, const BrushObject& brush,
                                  VectorBlend blend) {
    VectorPath path;
    addRectangle(path, from, to);
    addArea(map().at(std::move(path)), brush, blend);
}

void DeviceContext::fillRegion(const RegionObject& region, const BrushObject& brush) {
    addArea(region.area, brush, VectorBlend::cover);
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
    addShape(std::exchange(path_, {}), fills, strokes);
}

void DeviceContext::dropPath() {
    inPath_ = false;
    path_ = {};
}

void DeviceContext::setClip(VectorPath path, ClipMode mode) {
    auto around = mode == ClipMode::replace ? nullptr : state_.clip;
    const int depth = around ? around->depth + 1 : 1;
    if (!path.isEmpty() && depth <= deepestClip && isSound(path)) {
        state_.clip = std::make_shared<const VectorClip>(VectorClip{
            std::move(path), state_.winding, mode == ClipMode::exclude, std::move(around), depth});
    }
}

void DeviceContext::clipToPath(ClipMode mode) {
    inPath_ = false;
    setClip(std::exchange(path_, {}), mode);
}

void DeviceContext::clipToRectangle(VectorPoint from, VectorPoint to, ClipMode mode) {
    VectorPath path;
    addRectangle(path, from, to);
    setClip(map().at(std::move(path)), mode);
}

void DeviceContext::clipToRegion(const RegionObject& region, ClipMode mode) {
    setClip(region.area, mode);
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
    result.text = shownText(std::move(text), font.name);
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
    result.angle = map.determinant() >= 0 ? std::atan2(-along.y, along.x) : font.angle;
    result.colour = state_.textColour;
    if (state_.isOpaque) {
        result.background = state_.background;
    }
    if ((state_.textAlign & movesOn) != 0) {
        state_.current.x += length;
    }
    const bool isWhole = isSound(result.at) && isSound({result.size, result.angle}) &&
                         isSound({length * lengthOf(along), 0});
    if (!result.text.empty() && isWhole && !inPath_) {
        add(std::move(result));
    }
}

void DeviceContext::textOfBytes(VectorPoint at, word::ByteView bytes,
                                std::span<const double> advances) {
    std::vector<unsigned> units;
    std::u16string decoded = decodedText(bytes, state_.font.charset, units);
    text(at, std::move(decoded), advancesOfUnits(units, advances));
}

void DeviceContext::image(VectorImage image, VectorPoint from, VectorPoint extent) {
    const PlaneMap map = this->map();
    image.corner = map.at(from);
    image.across = map.turned({extent.x, 0});
    image.down = map.turned({0, extent.y});
    if (isSound(image.corner) && isSound(map.turned(extent))) {
        add(std::move(image));
    }
}

} // namespace qvnd::drawing::metafile
