#pragma once

#include "platform/word/docfile/document/FrameSpot.h"

#include <cstdint>
#include <vector>

namespace qvnd::layout {

// The position of a floating object and its text wrapping. Lengths in twips.
struct FloatPlace {
    // Alignment instead of a distance. FrameSpot tells what the position is relative to.
    enum class Align : std::uint8_t { none, start, centre, end };
    enum class Wrap : std::uint8_t { none, beside, below }; // below: text above and below only
    // The side of the text that wraps beside it; wider: the side with more space.
    enum class Side : std::uint8_t { both, left, right, wider };

    word::FrameSpot::Across across = word::FrameSpot::Across::fromColumn;
    word::FrameSpot::Down down = word::FrameSpot::Down::fromParagraph;
    Align alignAcross = Align::none;
    Align alignDown = Align::none;
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    Wrap wrap = Wrap::none;
    bool isBehindText = false; // of one that text does not wrap around
    Side side = Side::both;
    double apartAcross = 0; // horizontal distance of the text
    double apartDown = 0;   // vertical distance of the text
};

// A rectangle on a page, in twips from the upper left corner of the page.
struct PageArea {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

// The reference areas that positions of floating objects are relative to.
struct FloatFrame {
    PageArea page;
    PageArea margins;
    PageArea column;      // only its left and right edges are used
    double anchorTop = 0; // top of the anchor's line or paragraph
};

// The area of the object, without its distance from the text.
PageArea areaOf(const FloatPlace& place, const FloatFrame& frame);

// An area of the page that lines avoid.
struct Obstacle {
    PageArea area;      // including the distance from the text
    bool beside = true; // text wraps beside it
};

// A horizontal range for a line beside obstacles.
struct LineGap {
    double top = 0;
    double left = 0;
    double right = 0;
    bool operator==(const LineGap&) const = default;
};

// Widens what a turned shape keeps clear of text to where its corners reach. `degrees`: clockwise.
// The area of a shape that lies nearer to its side than to its foot is told as if it lay there.
void keepCornersClear(double degrees, FloatPlace& place);

// The ranges for a line of that height within `wanted`, from left to right. They are at the first
// position from `wanted.top` downwards that has a range of at least `narrowest`. Without obstacles
// in the way, the result is `wanted` itself.
std::vector<LineGap> gapsFor(const std::vector<Obstacle>& obstacles, const LineGap& wanted,
                             double height, double narrowest);

// The lower edge of the obstacle in the line's way that ends first; the line's top without one.
double endOfObstacle(const std::vector<Obstacle>& obstacles, const LineGap& line, double height);

} // namespace qvnd::layout
