#pragma once

#include "platform/word/docfile/document/FrameSpot.h"

#include <cstdint>
#include <vector>

namespace qvnd::layout {

// Where something that floats stands, and what the text around it does. Lengths in twips.
struct FloatPlace {
    // What a place is counted from is told by FrameSpot; instead of a distance it may be aligned.
    enum class Align : std::uint8_t { none, start, centre, end };
    enum class Wrap : std::uint8_t { none, beside, below }; // below: no text on either side
    // Where text may stand that goes on beside it; wider: where there is more room.
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
    Side side = Side::both;
    double apartAcross = 0; // what the text keeps clear beside it
    double apartDown = 0;   // and above and below it
};

// A part of a page, from its upper left corner.
struct PageArea {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

// What the places of a page's floating things are counted from.
struct FloatFrame {
    PageArea page;
    PageArea margins;
    PageArea column;      // its height does not count
    double anchorTop = 0; // of the line or paragraph that it is anchored at
};

// The area that it takes, without what is kept clear around it.
PageArea areaOf(const FloatPlace& place, const FloatFrame& frame);

// Something in the way of lines: an area of the page that they keep clear of.
struct Obstacle {
    PageArea area;      // with what is kept clear around it
    bool beside = true; // lines go on beside it
};

// Where a line may stand beside obstacles.
struct LineGap {
    double top = 0;
    double left = 0;
    double right = 0;
    bool operator==(const LineGap&) const = default;
};

// The places for a line of that height between `left` and `right`, from left to right, at `top` or
// as little below it as need be: at least one, each at least `narrowest` wide, unless nothing is in
// the line's way.
std::vector<LineGap> gapsFor(const std::vector<Obstacle>& obstacles, const LineGap& wanted,
                             double height, double narrowest);

// Where the first of the obstacles ends that are in the line's way; its top when there are none.
double endOfObstacle(const std::vector<Obstacle>& obstacles, const LineGap& line, double height);

} // namespace qvnd::layout
