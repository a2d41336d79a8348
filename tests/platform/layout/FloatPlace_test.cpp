#include "platform/word/layout/FloatPlace.h"

#include "platform/word/layout/PageObstacles.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

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

TEST(FloatPlace, WhatOnlyTouchesALineIsNotInItsWay) {
    const LineGap line{100, 200, 300};
    const auto isInTheWay = [&](const PageArea& area) {
        return gapsFor({{area, false}}, line, 50, 10) != std::vector<LineGap>{line};
    };
    EXPECT_FALSE(isInTheWay({0, 0, 1000, 100}));
    EXPECT_TRUE(isInTheWay({0, 0, 1000, 101}));
    EXPECT_FALSE(isInTheWay({0, 150, 1000, 400}));
    EXPECT_TRUE(isInTheWay({0, 149, 1000, 400}));
    EXPECT_FALSE(isInTheWay({0, 0, 200, 400}));
    EXPECT_TRUE(isInTheWay({0, 0, 201, 400}));
    EXPECT_FALSE(isInTheWay({300, 0, 1000, 400}));
    EXPECT_TRUE(isInTheWay({299, 0, 1000, 400}));
}

TEST(FloatPlace, APlaceAsWideAsTheNarrowestIsTaken) {
    const std::vector<Obstacle> obstacles{{{300, 0, 1700, 100}, true}};
    const std::vector<LineGap> both{{0, 0, 300}, {0, 1700, 2000}};
    EXPECT_EQ(gapsFor(obstacles, {0, 0, 2000}, 100, 300), both);
    EXPECT_EQ(gapsFor(obstacles, {0, 0, 2000}, 100, 301), (std::vector<LineGap>{{100, 0, 2000}}));
}

TEST(FloatPlace, ObstaclesThatOverlapLeaveNothingBetweenThem) {
    const std::vector<Obstacle> obstacles{{{900, 0, 1000, 100}, true}, {{200, 0, 1500, 100}, true}};
    EXPECT_EQ(gapsFor(obstacles, {0, 0, 2000}, 100, 200),
              (std::vector<LineGap>{{0, 0, 200}, {0, 1500, 2000}}));
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

TEST(PageObstacles, ThoseThatTextPassesAndThoseOfCellsAreNone) {
    const auto count = [](FloatPlace::Wrap wrap, double columnWidth) {
        AnchoredFloat floating;
        floating.place.wrap = wrap;
        floating.place.width = floating.place.height = 100;
        floating.columnWidth = columnWidth;
        Strips strips(1);
        strips[0].floats.push_back(std::move(floating));
        PageObstacles obstacles;
        obstacles.add(strips, {});
        return obstacles.within({0, 0, 1000, 1000}).size();
    };
    EXPECT_EQ(count(FloatPlace::Wrap::beside, 0), 1U);
    EXPECT_EQ(count(FloatPlace::Wrap::below, 0), 1U);
    EXPECT_EQ(count(FloatPlace::Wrap::none, 0), 0U);
    EXPECT_EQ(count(FloatPlace::Wrap::beside, 1), 0U);
}

TEST(PageObstacles, KeepTheirDistanceAndStandBelowTheStripsBeforeTheirs) {
    AnchoredFloat floating;
    floating.place.wrap = FloatPlace::Wrap::beside;
    floating.place.left = 300;
    floating.place.width = floating.place.height = 100;
    floating.place.apartAcross = 20;
    floating.place.apartDown = 10;
    floating.y = 5;
    Strips strips(2);
    strips[0].height = 200;
    strips[1].floats.push_back(std::move(floating));
    FloatFrame frame;
    frame.column = {1000, 0, 3000, 0};
    frame.anchorTop = 500;
    PageObstacles obstacles;
    obstacles.add(strips, frame);
    const PageArea area = obstacles.within({1000, 500, 3000, 1500}).at(0).area;
    EXPECT_DOUBLE_EQ(area.left, 300 - 20);
    EXPECT_DOUBLE_EQ(area.right, 400 + 20);
    EXPECT_DOUBLE_EQ(area.top, 205 - 10);
    EXPECT_DOUBLE_EQ(area.bottom, 305 + 10);
    EXPECT_TRUE(obstacles.within({1000, 815, 3000, 1500}).empty()) << "it ends above";
    EXPECT_TRUE(obstacles.within({1000, 500, 3000, 695}).empty()) << "it begins below";
    EXPECT_TRUE(obstacles.within({1420, 500, 3000, 1500}).empty());
    EXPECT_TRUE(obstacles.within({0, 500, 1280, 1500}).empty());
    EXPECT_EQ(obstacles.within({1419, 814, 3000, 1500}).size(), 1U);
    EXPECT_EQ(obstacles.within({0, 500, 1281, 696}).size(), 1U);
}

TEST(PageObstacles, ThoseFromACharacterOnAreForgotten) {
    AnchoredFloat floating;
    floating.place.wrap = FloatPlace::Wrap::beside;
    floating.place.width = floating.place.height = 100;
    Strips strips(2);
    strips[0].at = 4;
    strips[1].at = 5;
    strips[0].floats = strips[1].floats = {floating};
    PageObstacles obstacles;
    obstacles.add(strips, {});
    obstacles.forgetFrom(6);
    EXPECT_EQ(obstacles.within({0, 0, 500, 500}).size(), 2U);
    obstacles.forgetFrom(5);
    EXPECT_EQ(obstacles.within({0, 0, 500, 500}).size(), 1U);
    obstacles.clear();
    EXPECT_TRUE(obstacles.within({0, 0, 500, 500}).empty());
}

TEST(TurnedShapes, KeepClearWhatTheirCornersReachTo) {
    const auto apart = [](double degrees) {
        FloatPlace place;
        place.width = 400;
        place.height = 200;
        place.apartAcross = 10;
        keepCornersClear(degrees, place);
        return std::pair(place.apartAcross, place.apartDown);
    };
    EXPECT_NEAR(apart(0).first, 10, 1e-9);
    EXPECT_NEAR(apart(0).second, 0, 1e-9);
    for (const double degrees : {30.0, -30.0, 150.0, 210.0, 330.0}) {
        EXPECT_NEAR(apart(degrees).first, 10 + 23.2, 0.01) << degrees;
        EXPECT_NEAR(apart(degrees).second, 86.6, 0.01) << degrees;
    }
    EXPECT_NEAR(apart(90).first, 10, 1e-9) << "its area is told as if it lay";
    EXPECT_NEAR(apart(90).second, 0, 1e-9);
    EXPECT_NEAR(apart(60).first, 10 + 23.2, 0.01);
}

} // namespace
} // namespace qvnd::layout
