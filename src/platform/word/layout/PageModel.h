#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/layout/FontMetrics.h"
#include "platform/word/layout/Path.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// A page as it is painted. Lengths in twips, right and down from the page's upper left corner;
// colours 0xRRGGBB, where nothing is black.
namespace qvnd::layout {

// Characters of one face, side by side on one line.
struct PlacedText {
    double x = 0;
    double baseline = 0;
    double size = 200;  // of the font, in twips
    double stretch = 1; // of the characters' width
    FaceId face = 0;
    std::u16string text;
    std::vector<float> advances; // a code unit each; 0 for the second of a pair
    std::optional<std::uint32_t> colour{};
    bool underlined = false;
    bool struckOut = false;
    bool bold = false; // where the face itself is not
};

struct Fill {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    std::uint32_t colour = 0;
};

struct Rule {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    double width = 10;
    bool isDouble = false;
    std::optional<std::uint32_t> colour{};
};

// A picture in its place: a blob that word::Picture reads.
struct PlacedPicture {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    word::DataBlob blob;
};

// The outline of a shape.
struct Outline {
    Path path;
    std::optional<std::uint32_t> fill{};
    bool hasLine = true;
    double lineWidth = 15;
    std::optional<std::uint32_t> lineColour{};
    bool isDashed = false;
};

// Text that is set into a form: it fills its area, whatever its own proportions. No measure is 0.
struct TextArt {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    double angle = 0;    // radians, clockwise, around the middle of the area
    double opacity = 1;  // 0 invisible
    double ownWidth = 0; // that the texts take before they are stretched
    double ownHeight = 0;
    std::vector<PlacedText> texts; // from the upper left corner of that room
};

// What stands on a page or on a part of it. Fills lie under all the rest, then text art, outlines
// and pictures.
struct Layer {
    std::vector<Fill> fills;
    std::vector<TextArt> textArt;
    std::vector<Outline> outlines;
    std::vector<PlacedPicture> pictures;
    std::vector<Rule> rules;
    std::vector<PlacedText> texts;

    // Puts what another layer holds there, moved by that distance.
    void append(const Layer& other, double right, double down);
};

struct Page {
    int sheet = 0;  // counted from 0
    int number = 1; // as its section counts
    std::u16string numberText;
    double width = 11906;
    double height = 16838;
    Layer layer;
};

} // namespace qvnd::layout
