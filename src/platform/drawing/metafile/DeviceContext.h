#pragma once

#include "platform/drawing/metafile/Geometry.h"
#include "platform/drawing/metafile/GraphicsObjects.h"

#include <span>
#include <vector>

namespace qvnd::drawing::metafile {

// The device that records of a metafile draw on ([MS-WMF] 3.1, [MS-EMF] 3.1): its state, and calls
// that turn logical coordinates into elements of a picture. What cannot be shown is left out.
class DeviceContext {
public:
    // `unitsPerMillimetre`: of the device, for the mapping modes that have fixed units.
    explicit DeviceContext(VectorPoint unitsPerMillimetre);

    struct Mapping {
        unsigned mode = 1; // MapMode, [MS-WMF] 2.1.1.16
        VectorPoint windowOrigin{};
        VectorPoint windowExtent{1, 1};
        VectorPoint viewportOrigin{};
        VectorPoint viewportExtent{1, 1};
        PlaneMap world{};
    };
    struct State {
        Mapping mapping;
        PenObject pen{VectorPen{}, true};
        BrushObject brush{0xFFFFFF};
        FontObject font;
        std::uint32_t textColour = 0;
        std::uint32_t background = 0xFFFFFF;
        bool isOpaque = true; // what lies behind text and between the lines of a hatch is coloured
        unsigned rasterOperation = 13; // of pens and brushes, [MS-WMF] 2.1.1.2: as they are
        bool winding = false;
        unsigned textAlign = 0;
        bool arcsClockwise = false;
        VectorPoint current{}; // logical
        std::shared_ptr<const VectorClip> clip;
    };
    State& state() { return state_; }
    // Keeps the state for restore(); a state kept 256 levels deep is the last.
    void save();
    // Negative: that many levels back; positive: the level of that number.
    void restore(int level);

    // A region that is selected becomes the clip.
    void select(const GraphicsObject& object);

    void moveTo(VectorPoint to);
    void lineTo(VectorPoint to);
    // Goes on at the current place and moves it.
    void polylineTo(std::span<const VectorPoint> points);
    void bezierTo(std::span<const VectorPoint> points);
    // By a kind for each point ([MS-EMF] 2.1.26), of which there are as many.
    void polyDraw(std::span<const VectorPoint> points, std::span<const std::uint8_t> kinds);
    void polyline(std::span<const VectorPoint> points);
    void bezier(std::span<const VectorPoint> points);
    // Each span one closed figure; all are filled together.
    void polygons(const std::vector<std::span<const VectorPoint>>& figures);
    void rectangle(VectorPoint from, VectorPoint to);
    void roundRectangle(VectorPoint from, VectorPoint to, VectorPoint corner);
    void ellipse(VectorPoint from, VectorPoint to);
    enum class Arc : std::uint8_t {
        open,
        chord,
        pie,
        joined
    }; // joined: goes on from the current place
    // From the ray to `start` to the ray to `end`.
    void arc(VectorPoint from, VectorPoint to, VectorPoint start, VectorPoint end, Arc kind);
    // Goes on from the current place along a circle; angles in degrees, counterclockwise.
    void angleArc(VectorPoint centre, double radius, double start, double sweep);
    void pixel(VectorPoint at, std::uint32_t colour);
    // Areas without outline, which no raster operation of the state changes.
    void fillRectangle(VectorPoint from, VectorPoint to, std::uint32_t colour);
    void fillRectangle(VectorPoint from, VectorPoint to, const BrushObject& brush,
                       VectorBlend blend);
    void fillRegion(const RegionObject& region, const BrushObject& brush);

    // A bracket of path records: what is drawn in it makes a path.
    void beginPath();
    void endPath() { inPath_ = false; }
    void closeFigure();
    void drawPath(bool fills, bool strokes);
    void dropPath();

    enum class ClipMode : std::uint8_t { intersect, exclude, replace };
    void clipToPath(ClipMode mode);
    void clipToRectangle(VectorPoint from, VectorPoint to, ClipMode mode);
    void clipToRegion(const RegionObject& region, ClipMode mode);
    void clipNothing() { state_.clip.reset(); }

    // In the characters of the font that is selected, those of symbol fonts as others have them.
    // `advances`: logical, a code unit each; may be empty.
    void text(VectorPoint at, std::u16string text, std::span<const double> advances);
    // The same in the font's code page, with an advance for each byte or none.
    void textOfBytes(VectorPoint at, word::ByteView bytes, std::span<const double> advances);
    void image(VectorImage image, VectorPoint from, VectorPoint extent);

    VectorPoint toDevice(VectorPoint logical) const { return map().at(logical); }
    VectorPath toDevice(VectorPath logical) const { return map().at(std::move(logical)); }
    std::vector<VectorElement> takeElements() { return std::move(elements_); }

private:
    PlaneMap map() const;
    VectorPath fromCurrent() const;
    void addArc(const Ellipse& ellipse, double begin, double turn, Arc kind);
    void addContinued(VectorPath path);
    void addFigure(const VectorPath& logical, bool fills, bool strokes);
    void addShape(VectorPath path, bool fills, bool strokes);
    void addArea(VectorPath path, const BrushObject& brush, VectorBlend blend);
    void fill(VectorShape& shape, const BrushObject& brush) const;
    void add(decltype(VectorElement::what) what);
    void setClip(VectorPath path, ClipMode mode);
    VectorPen devicePen(const PenObject& object) const;

    VectorPoint unitsPerMillimetre_;
    State state_;
    std::vector<State> saved_;
    std::vector<VectorElement> elements_;
    VectorPath path_; // of the bracket, in units of the device
    bool inPath_ = false;
};

} // namespace qvnd::drawing::metafile
