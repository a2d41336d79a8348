#pragma once

#include "platform/drawing/PixelImage.h"
#include "platform/word/layout/Path.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

// A drawing as plain values: what a metafile describes once its records are carried out. Lengths
// are units of the picture, right and down; colours are 0xRRGGBB.
namespace qvnd::drawing {

using VectorPoint = layout::PathPoint;
using VectorPath = layout::Path;

struct VectorPen {
    std::uint32_t colour = 0;
    double width = 0;           // 0: the finest line that is seen
    std::vector<double> dashes; // parts of the line's width, ink and gap in turn; none: solid
    bool isRound = true;        // ends and corners
};

// Fine lines at even distances, which do not grow with the drawing. Each flag is a direction, seen
// from left to right.
struct VectorHatch {
    bool level = false;
    bool upright = false;
    bool falling = false;
    bool rising = false;
    std::uint32_t colour = 0;
};

// How colours meet what lies under them.
enum class VectorBlend : std::uint8_t { cover, darken, lighten, invert };

// An area: its fill lies lowest, then its tiles, its hatch, and its outline.
struct VectorShape {
    VectorPath path;
    bool winding = false; // the rule by which its inside is told: winding, or even and odd
    std::optional<std::uint32_t> fill{};
    std::shared_ptr<const PixelImage> tile{}; // repeated from the picture's corner, at 96 dpi
    std::optional<VectorHatch> hatch{};
    std::optional<VectorPen> pen{};
    VectorBlend blend = VectorBlend::cover;
};

// Characters from one place on.
struct VectorText {
    enum class Across : std::uint8_t { left, centre, right };
    enum class Down : std::uint8_t { top, baseline, bottom };
    VectorPoint at;
    Across across = Across::left; // of the text at that place
    Down down = Down::top;
    std::u16string text;
    std::vector<double> advances; // a code unit each; none: as the face has them
    std::u16string font;
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struckOut = false;
    double size = 0;           // of the characters, or of the line where `isLineHeight`
    bool isLineHeight = false; // ascent and descent together are that high
    double angle = 0;          // radians, counterclockwise
    std::uint32_t colour = 0;
    std::optional<std::uint32_t> background{}; // of the area behind the characters
};

struct VectorImage {
    PixelImage image;
    VectorPoint corner; // its upper left one
    VectorPoint across; // from there to the upper right one
    VectorPoint down;   // from there to the lower left one
    VectorBlend blend = VectorBlend::cover;
    double opacity = 1; // of all pixels, 0 to 1
};

// What is seen lies within the path, or outside of it, and within the clip around it.
struct VectorClip {
    VectorPath path;
    bool winding = false;
    bool isOutside = false;
    std::shared_ptr<const VectorClip> around;
    int depth = 1;
};

struct VectorElement {
    std::variant<VectorShape, VectorText, VectorImage> what;
    std::shared_ptr<const VectorClip> clip;
};

// The area that is shown, and what stands on it, from the lowest to the uppermost.
struct VectorPicture {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    std::vector<VectorElement> elements;
};

} // namespace qvnd::drawing
