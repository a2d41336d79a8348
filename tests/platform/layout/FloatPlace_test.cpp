#include "platform/word/layout/FloatPlace.h"

#include "platform/word/layout/PageObstacles.h"

#include <gtest/gtest.h>

namespace qvnd::layout {
namespace {

using Align = FloatPlace::Align;
using Spot = word::FrameSpot;

// A page of 4000 by 4000 with margins of 1000 and a column of 800 at its right.
FloatFrame page() {
    FloatFrame frame;
    frame.page = {0, 0, 4000, 4000};
    frame.margins = {1000, 1000, 3000, 3000};
    frame.column = {2200, 0, 3000, 0};
    frame.anchorTop = 1500;
    return frame;
}

FloatPlace box() {
    FloatPlace place;
    place.left = 100;
    place.top = 50;
    place.width = 400;
    place.height = 200;
    return place;
}

TEST(FloatPlace, DistancesCountFromColumnMarginOrPage) {
    FloatPlace place = box();
    EXPECT_DOUBLE_EQ(areaOf(place, page()).left, 2300);
    place.across = Spot::Across::fromMargin;
    EXPECT_DOUBLE_EQ(areaOf(place, page()).left, 1100);
    place.across = Spot::Across::fromPage;
    EXPECT_DOUBLE_EQ(areaOf(place, page()).left, 100);
}

TEST(FloatPlace, DistancesDownCountFromAnchorMarginOrPage) {
    FloatPlace place = box();
    EXPECT_DOUBLE_EQ(areaOf(place, page()).top, 1550);
    place.down = Spot::Down::fromMargin;
    EXPECT_DOUBLE_EQ(areaOf(place, page()).top, 1050);
    place.down = Spot::Down::fromPage;
    EXPECT_DOUBLE_EQ(areaOf(place, page()).top, 50);
    EXPECT_DOUBLE_EQ(areaOf(place, page()).bottom, 250);
}

TEST(FloatPlace, AnAlignedOneStandsAtTheStartInTheMiddleOrAtTheEnd) {
    FloatPlace place = box();
    place.across = Spot::Across::fromMargin;
    place.down = Spot::Down::fromPage;
    place.alignAcross = Align::start;
    EXPECT_DOUBLE_EQ(areaOf(place, page()).left, 1000);
    place.alignAcross = place.alignDown = Align::centre;
    EXPECT_DOUBLE_EQ(areaOf(place, page()).left, 1800);
    EXPECT_DOUBLE_EQ(areaOf(place, page()).top, 1900);
    place.alignAcross = place.alignDown = Align::end;
    EXPECT_DOUBLE_EQ(areaOf(place, page()).right, 3000);
    EXPECT_DOUBLE_EQ(areaOf(place, page()).bottom, 4000);
}

TEST(FloatPlace, ALineStandsOnBothSidesOfAnObstacle) {
    const std::vector<Obstacle> obstacles{{{500, 0, 700, 100}, true}};
    const std::vector<LineGap> expected{{50, 0, 500}, {50, 700, 2000}};
    EXPECT_EQ(gapsFor(obstacles, {50, 0, 2000}, 100, 300), expected);
}

TEST(FloatPlace, APlaceThatIsTooNarrowIsLeftOut) {
    const std::vector<Obstacle> obstacles{{{200, 0, 700, 100}, true}};
    const std::vector<LineGap> expected{{50, 700, 2000}};
    EXPECT_EQ(gapsFor(obstacles, {50, 0, 2000}, 100, 300), expected);
}

TEST(FloatPlace, ALineThatHasTooLittleRoomBesideGoesBelow) {
    const std::vector<Obstacle> obstacles{{{0, 0, 1800, 100}, true}, {{0, 0, 1900, 400}, true}};
    const std::vector<LineGap> expected{{400, 0, 2000}};
    EXPECT_EQ(gapsFor(obstacles, {50, 0, 2000}, 100, 300), expected);
}

TEST(FloatPlace, NothingStandsBesideWhatHasNoTextBesideIt) {
    const std::vector<Obstacle> obstacles{{{0, 0, 100, 300}, false}};
    const std::vector<LineGap> expected{{300, 0, 2000}};
    EXPECT_EQ(gapsFor(obstacles, {0, 0, 2000}, 100, 300), expected);
}

TEST(FloatPlace, ALineThatMeetsNothingStaysWhereItIsHoweverNarrow) {
    const std::vector<LineGap> expected{{300, 0, 200}};
    EXPECT_EQ(gapsFor({{{0, 0, 100, 300}, true}}, {300, 0, 200}, 100, 1000), expected);
}

TEST(FloatPlace, TheFirstObstacleInALinesWayEndsFirst) {
    const std::vector<Obstacle> obstacles{{{0, 0, 100, 300}, true}, {{500, 0, 600, 200}, true}};
    EXPECT_DOUBLE_EQ(endOfObstacle(obstacles, {50, 0, 2000}, 100), 200);
    EXPECT_DOUBLE_EQ(endOfObstacle(obstacles, {300, 0, 2000}, 100), 300) << "nothing in its way";
}

// An obstacle from 500 to 700 across, in a column of 2000 or of that width.
PageArea inColumn(FloatPlace::Side side, double width = 2000) {
    AnchoredFloat floating;
    floating.place.wrap = FloatPlace::Wrap::beside;
    floating.place.side = side;
    floating.place.left = 500;
    floating.place.width = 200;
    floating.place.height = 100;
    Strips strips(1);
    strips[0].floats.push_back(std::move(floating));
    FloatFrame frame;
    frame.column = {0, 0, width, 0};
    PageObstacles obstacles;
    obstacles.add(strips, frame);
    return obstacles.within({0, 0, width, 1000}).at(0).area;
}

TEST(PageObstacles, WithTextOnOneSideAloneTheyReachToTheColumnsOtherEnd) {
    using Side = FloatPlace::Side;
    EXPECT_DOUBLE_EQ(inColumn(Side::both).left, 500);
    EXPECT_DOUBLE_EQ(inColumn(Side::both).right, 700);
    EXPECT_DOUBLE_EQ(inColumn(Side::left).left, 500);
    EXPECT_DOUBLE_EQ(inColumn(Side::left).right, 2000);
    EXPECT_DOUBLE_EQ(inColumn(Side::right).left, 0);
    EXPECT_DOUBLE_EQ(inColumn(Side::right).right, 700);
    EXPECT_DOUBLE_EQ(inColumn(Side::wider).left, 0) << "there is more room at the right";
    EXPECT_DOUBLE_EQ(inColumn(Side::wider).right, 700);
    EXPECT_DOUBLE_EQ(inColumn(Side::wider, 1200).left, 500) << "both sides are as wide";
    EXPECT_DOUBLE_EQ(inColumn(Side::wider, 1200).right, 1200);
}

} // namespace
} // namespace qvnd::layout
