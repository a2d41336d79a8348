#include "platform/word/layout/FloatPlace.h"

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

TEST(FloatPlace, ALineTakesTheWidestPlaceBesideObstacles) {
    const std::vector<Obstacle> obstacles{{{500, 0, 700, 100}, true}};
    const LineGap gap = gapFor(obstacles, {50, 0, 2000}, 100, 300);
    EXPECT_DOUBLE_EQ(gap.left, 700);
    EXPECT_DOUBLE_EQ(gap.right, 2000);
    EXPECT_DOUBLE_EQ(gap.top, 50);
}

TEST(FloatPlace, ALineThatHasTooLittleRoomBesideGoesBelow) {
    const std::vector<Obstacle> obstacles{{{0, 0, 1800, 100}, true}, {{0, 0, 1900, 400}, true}};
    const LineGap gap = gapFor(obstacles, {50, 0, 2000}, 100, 300);
    EXPECT_DOUBLE_EQ(gap.top, 400);
    EXPECT_DOUBLE_EQ(gap.left, 0);
}

TEST(FloatPlace, NothingStandsBesideWhatHasNoTextBesideIt) {
    const std::vector<Obstacle> obstacles{{{0, 0, 100, 300}, false}};
    EXPECT_DOUBLE_EQ(gapFor(obstacles, {0, 0, 2000}, 100, 300).top, 300);
}

TEST(FloatPlace, ALineThatMeetsNothingStaysWhereItIsHoweverNarrow) {
    const LineGap gap = gapFor({{{0, 0, 100, 300}, true}}, {300, 0, 200}, 100, 1000);
    EXPECT_DOUBLE_EQ(gap.top, 300);
    EXPECT_DOUBLE_EQ(gap.right, 200);
}

} // namespace
} // namespace qvnd::layout
