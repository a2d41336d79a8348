#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/formatting/LetterEffects.h"
#include "platform/word/formatting/Underline.h"
#include "platform/word/layout/FontMetrics.h"
#include "platform/word/layout/Path.h"
#include "platform/word/layout/ShapeTurn.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// A laid-out page, ready for painting. Lengths are in twips; coordinates count right and down from
// the upper left corner of the page. Colours are 0xRRGGBB; an empty colour is black.
namespace qvnd::layout {

// The order of painting: what is on a higher plane is painted later, over what is on a lower one.
// Text is on plane 0, drawings behind it are below, drawings in front of it above.
using Plane = std::int64_t;
// `order`: of the drawing in its document; `part`: of a shape in its drawing.
Plane planeOfDrawing(bool isBehindText, std::uint32_t order, std::size_t part);
// From the planes of a text to those of a header, which lie below all of the page's text.
inline constexpr Plane toHeader = -(Plane{3} << 52);

// A run of characters of one face on one line.
struct PlacedText {
    double x = 0;
    double baseline = 0;
    double size = 200;  // of the font, in twips
    double stretch = 1; // horizontal scaling of the characters
    FaceId face = 0;
    std::u16string text;
    std::vector<float> advances; // one for each code unit; 0 for the second of a surrogate pair
    std::optional<std::uint32_t> colour{};
    word::Underline underline{};
    bool struckOut = false;
    word::LetterEffects effects;
    int quarterTurns = 0;           // about its beginning: 1 runs downwards, -1 upwards
    bool bold = false;              // synthesised, because the face is not bold
    std::optional<double> endsAt{}; // nothing of it is painted below this height
    Plane plane = 0;
};

struct Fill {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    std::uint32_t colour = 0;
    Plane plane = 0;
};

struct Rule {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    double width = 10;
    std::optional<std::uint32_t> colour{};
    Plane plane = 0;
};

// A picture and its position before it is turned. word::Picture decodes the blob.
struct PlacedPicture {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    word::DataBlob blob;
    std::optional<double> endsAt{}; // as of a text
    ShapeTurn turn{};
    Plane plane = 0;
};

// The outline of a shape.
struct Outline {
    Path path;
    std::optional<std::uint32_t> fill{};
    bool hasLine = true;
    double lineWidth = 15;
    std::optional<std::uint32_t> lineColour{};
    bool isDashed = false;
    Plane plane = 0;
};

// Text art: text that is stretched to fill its area. No width or height is 0.
struct TextArt {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    double angle = 0;    // radians, clockwise, around the centre of the area
    double opacity = 1;  // 0 is invisible
    double ownWidth = 0; // of the texts before stretching
    double ownHeight = 0;
    std::vector<PlacedText> texts; // relative to the upper left corner of the unstretched area
    Plane plane = 0;
};

// The content of a page or of a part of a page. Each plane is painted in the order of the members.
struct Layer {
    std::vector<Fill> fills;
    std::vector<TextArt> textArt;
    std::vector<Outline> outlines;
    std::vector<PlacedPicture> pictures;
    std::vector<Rule> rules;
    std::vector<PlacedText> texts;

    // Adds the content of another layer, moved by that distance.
    void append(Layer other, double right, double down);
    // Moves all to higher planes, or to lower ones.
    void movePlanes(Plane by);
    // Of what begins between two distances from the left edge: removes what stands below that
    // height, and cuts off fills, rules, texts and pictures that reach beyond it; outlines that do
    // stay whole. Text art, which stands in layers of drawings, stays. `keepsTexts`: texts below it
    // are not seen, but a reader of the PDF finds them.
    void cutBelow(double y, double left, double right, bool keepsTexts = false);
};

struct Page {
    int sheet = 0;             // index of the page, from 0
    int number = 1;            // page number by the numbering of its section
    std::u16string numberText; // the number in the section's number format
    double width = 11906;
    double height = 16838;
    Layer layer;

    // Moves the baselines of texts to where the office suite draws them: at tenths of points from
    // the top, of two equally near the lower one. The suite writes them as distances from the foot
    // of paper of whole hundredths of millimetres, cut off behind thousandths of points, so that
    // they stand a little lower.
    void alignLikeOffice();
};

} // namespace qvnd::layout
