#pragma once

#include "platform/drawing/metafile/VectorPicture.h"

#include <map>
#include <optional>
#include <span>
#include <variant>
#include <vector>

namespace qvnd::drawing::metafile {

// x' = a x + c y + e, y' = b x + d y + f
struct PlaneMap {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    VectorPoint at(VectorPoint p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
    VectorPoint turned(VectorPoint p) const { return {a * p.x + c * p.y, b * p.x + d * p.y}; }
    // First this one, then the other.
    PlaneMap then(const PlaneMap& next) const;
};

// What metafiles create and select, its lengths in logical units.
struct PenObject {
    std::optional<VectorPen> pen; // nothing: draws no line
    bool isCosmetic = false;      // its width does not grow with the drawing
};
struct BrushObject {
    std::optional<std::uint32_t> colour; // nothing: fills nothing
};
struct FontObject {
    std::u16string name;
    double height = 0; // positive: of a line; negative: of its characters; 0: some usual size
    double angle = 0;  // radians, counterclockwise
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struckOut = false;
    unsigned charset = 0;
};
struct OtherObject {}; // a palette, a region: takes a place and draws nothing
using GraphicsObject = std::variant<OtherObject, PenObject, BrushObject, FontObject>;

// The device that records of a metafile draw on ([MS-WMF] 3.1, [MS-EMF] 3.1): its state, and calls
// that turn logical coordinates into elements of a picture. What cannot be shown is left out.
class DeviceContext {
public:
    // `unitsPerMillimetre`: of the device, for the mapping modes that have fixed units.
    explicit DeviceContext(VectorPoint unitsPerMillimetre);

    struct Mapping {
        unsigned mode = 1;
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

    void select(const GraphicsObject& object);

    void moveTo(VectorPoint to);
    void lineTo(VectorPoint to);
    // Goes on at the current place and moves it.
    void polylineTo(std::span<const VectorPoint> points);
    void bezierTo(std::span<const VectorPoint> points);
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
    void arc(VectorPoint from, VectorPoint to, VectorPoint start, VectorPoint end, Arc kind);
    // A rectangle without outline.
    void fillRectangle(VectorPoint from, VectorPoint to, std::uint32_t colour);

    // A bracket of path records: what is drawn in it makes a path.
    void beginPath();
    void endPath() { inPath_ = false; }
    void closeFigure();
    void drawPath(bool fills, bool strokes);
    void dropPath();

    enum class ClipMode : std::uint8_t { intersect, replace };
    void clipToPath(ClipMode mode);
    void clipToRectangle(VectorPoint from, VectorPoint to);
    // Corners in units of the device, two for each rectangle.
    void clipToDeviceRectangles(std::span<const VectorPoint> corners, ClipMode mode);
    void clipNothing() { state_.clip.reset(); }

    // `advances`: logical, a code unit each; may be empty.
    void text(VectorPoint at, std::u16string text, std::span<const double> advances);
    void image(PixelImage pixels, VectorPoint from, VectorPoint extent, VectorBlend blend);

    VectorPoint toDevice(VectorPoint logical) const { return map().at(logical); }
    std::vector<VectorElement> takeElements() { return std::move(elements_); }

private:
    PlaneMap map() const;
    double lengthScale() const;
    void addFigure(VectorPath path, bool fills, bool strokes);
    void add(decltype(VectorElement::what) what);
    void setClip(VectorPath path, ClipMode mode);
    VectorPen devicePen(const PenObject& object) const;
    VectorPath ellipsePath(VectorPoint from, VectorPoint to) const;

    VectorPoint unitsPerMillimetre_;
    State state_;
    std::vector<State> saved_;
    std::vector<VectorElement> elements_;
    VectorPath path_; // of the bracket, in units of the device
    bool inPath_ = false;
};

// 0x00BBGGRR as records have it.
std::uint32_t colourOfRecord(std::uint32_t bgr);
PenObject penOf(unsigned style, double width, std::uint32_t bgr);
// `style`: solid, none, hatched, or of a pattern. A hatch is shown as a lighter colour, a pattern
// as grey.
BrushObject brushOf(unsigned style, std::uint32_t bgr);

} // namespace qvnd::drawing::metafile
