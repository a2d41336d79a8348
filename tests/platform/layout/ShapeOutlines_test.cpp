#include "platform/word/layout/ShapeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

TEST(ShapeOutlines, ARectangleHasNoneUnlessItIsTurned) {
    const PageArea square{0, 0, 100, 100};
    EXPECT_TRUE(shapeOutline(1, square, {}).isEmpty());
    const Path turned = shapeOutline(1, square, {false, false, std::numbers::pi / 4});
    ASSERT_FALSE(turned.isEmpty());
    EXPECT_NEAR(turned.points[0].x, 50, 0.01);
    EXPECT_NEAR(turned.points[0].y, 50 - 50 * std::numbers::sqrt2, 0.01);
}

TEST(ShapeOutlines, TheAreaOfAShapeOnItsSideIsTheOneThatItTakesThere) {
    const PageArea wide{0, 0, 200, 100};
    const Path path = shapeOutline(110, wide, {false, false, std::numbers::pi / 2});
    ASSERT_EQ(path.points.size(), 4U);
    EXPECT_NEAR(path.points[0].x, 200, 0.01); // the upper corner points to the right
    EXPECT_NEAR(path.points[0].y, 50, 0.01);
    EXPECT_NEAR(path.points[1].y, 100, 0.01);
    const Path upright = shapeOutline(110, wide, {false, false, std::numbers::pi * 3 / 4});
    EXPECT_NEAR(std::hypot(upright.points[0].x - 100, upright.points[0].y - 50), 50, 0.01);
}

TEST(ShapeOutlines, AFlippedLineRunsAlongTheOtherDiagonal) {
    const Path line = shapeOutline(20, {10, 20, 110, 220}, {false, true, 0});
    ASSERT_EQ(line.points.size(), 2U);
    EXPECT_EQ(line.points[0], (PathPoint{10, 220}));
    EXPECT_EQ(line.points[1], (PathPoint{110, 20}));
    EXPECT_NE(line.steps.back(), Path::Step::close);
}

TEST(ShapeOutlines, ADecisionIsADiamondInItsArea) {
    const Path path = shapeOutline(110, {0, 0, 200, 100}, {});
    EXPECT_EQ(path.points, (std::vector<PathPoint>{{100, 0}, {200, 50}, {100, 100}, {0, 50}}));
    EXPECT_EQ(path.steps.back(), Path::Step::close);
}

TEST(ShapeOutlines, RoundedCornersAreCirclesWhateverTheArea) {
    const Path path = shapeOutline(2, {0, 0, 600, 300}, {});
    EXPECT_NEAR(path.points[0].x, 50, 0.01);     // a sixth of the shorter side
    EXPECT_NEAR(path.points[4].y - 0, 50, 0.01); // where the first corner ends
}

TEST(ShapeOutlines, ABracePointsToItsSideInTheMiddleOfItsHeight) {
    const PageArea area{0, 0, 100, 600};
    const Path left = shapeOutline(87, area, {});
    ASSERT_FALSE(left.isEmpty());
    EXPECT_EQ(left.points.front(), (PathPoint{100, 0}));
    EXPECT_EQ(left.points.back(), (PathPoint{100, 600}));
    const auto hasPoint = [](const Path& path, PathPoint wanted) {
        return std::any_of(path.points.begin(), path.points.end(), [&](const PathPoint& point) {
            return std::abs(point.x - wanted.x) < 0.01 && std::abs(point.y - wanted.y) < 0.01;
        });
    };
    EXPECT_TRUE(hasPoint(left, {0, 300}));
    EXPECT_TRUE(hasPoint(left, {50, 50})); // behind the first curve
    EXPECT_TRUE(hasPoint(left, {50, 550}));
    EXPECT_NE(left.steps.back(), Path::Step::close);
    const Path right = shapeOutline(88, area, {});
    EXPECT_EQ(right.points.front(), (PathPoint{0, 0}));
    EXPECT_TRUE(hasPoint(right, {100, 300}));
}

TEST(ShapeOutlines, EveryKindStaysWithinItsAreaAndHasAsManyPointsAsItsStepsNeed) {
    for (unsigned kind = 0; kind < 203; ++kind) {
        const Path path = shapeOutline(kind, {100, 200, 300, 500}, {});
        std::size_t needed = 0;
        for (const Path::Step step : path.steps) {
            needed += step == Path::Step::curve ? 3 : step == Path::Step::close ? 0 : 1;
        }
        EXPECT_EQ(path.points.size(), needed) << kind;
        for (const PathPoint& point : path.points) {
            EXPECT_GE(point.x, 99.9) << kind;
            EXPECT_LE(point.x, 300.1) << kind;
            EXPECT_GE(point.y, 199.9) << kind;
            EXPECT_LE(point.y, 560.1) << kind; // the control points of a wave lie below it
        }
    }
}

// The corners of a shape in an area of 100 by 100, in tenths.
std::set<std::pair<long, long>> cornersOf(unsigned kind, const ShapeTurn& turn) {
    std::set<std::pair<long, long>> corners;
    for (const PathPoint& point : shapeOutline(kind, {0, 0, 100, 100}, turn).points) {
        corners.emplace(std::lround(point.x * 10), std::lround(point.y * 10));
    }
    return corners;
}

TEST(ShapeOutlines, ManualInputRisesToTheRight) {
    constexpr unsigned manualInput = 118;
    EXPECT_EQ(cornersOf(manualInput, {}),
              (std::set<std::pair<long, long>>{{0, 200}, {1000, 0}, {1000, 1000}, {0, 1000}}));
}

TEST(ShapeOutlines, ShapesThatAreEqualOnBothSidesStayTheSameWhenTheyAreFlipped) {
    const ShapeTurn across{true, false, 0};
    const ShapeTurn down{false, true, 0};
    for (const unsigned kind : {2U, 3U, 4U, 9U, 10U, 11U, 69U, 70U, 110U, 116U, 117U, 120U, 176U}) {
        EXPECT_EQ(cornersOf(kind, across), cornersOf(kind, {})) << kind;
        EXPECT_EQ(cornersOf(kind, down), cornersOf(kind, {})) << kind;
    }
    for (const unsigned kind : {5U, 8U, 12U, 67U, 68U, 119U}) {
        EXPECT_EQ(cornersOf(kind, across), cornersOf(kind, {})) << kind;
        EXPECT_NE(cornersOf(kind, down), cornersOf(kind, {})) << kind;
    }
    for (const unsigned kind : {13U, 15U, 55U, 66U}) {
        EXPECT_EQ(cornersOf(kind, down), cornersOf(kind, {})) << kind;
        EXPECT_NE(cornersOf(kind, across), cornersOf(kind, {})) << kind;
    }
    for (const unsigned kind : {7U, 34U, 111U}) {
        EXPECT_EQ(cornersOf(kind, {true, true, 0}), cornersOf(kind, {})) << kind;
    }
    EXPECT_EQ(cornersOf(66, across), cornersOf(13, {}));
    EXPECT_EQ(cornersOf(68, down), cornersOf(67, {}));
}

TEST(ShapeOutlines, AnArrowsHeadStandsAtItsTip) {
    const Path head = arrowHead({0, 0}, {1000, 0}, 20);
    ASSERT_EQ(head.points.size(), 3U);
    EXPECT_EQ(head.points[0], (PathPoint{1000, 0}));
    EXPECT_EQ(head.points[1], (PathPoint{920, 40}));
    EXPECT_TRUE(arrowHead({5, 5}, {5, 5}, 20).isEmpty());
}

TEST(ShapeOutlines, BracketsAreOpenOnTheSideThatTheyFace) {
    const PageArea square{0, 0, 100, 100};
    EXPECT_EQ(shapeOutline(85, square, {}).points,
              (std::vector<PathPoint>{{100, 0}, {0, 0}, {0, 100}, {100, 100}}));
    EXPECT_EQ(shapeOutline(86, square, {}).points,
              (std::vector<PathPoint>{{0, 0}, {100, 0}, {100, 100}, {0, 100}}));
    for (const unsigned kind : {19U, 20U, 32U, 33U, 34U, 38U, 85U, 86U}) {
        EXPECT_TRUE(isOpenShape(kind)) << kind;
        EXPECT_NE(shapeOutline(kind, square, {}).steps.back(), Path::Step::close) << kind;
    }
    for (const unsigned kind : {4U, 13U, 110U}) {
        EXPECT_FALSE(isOpenShape(kind)) << kind;
        EXPECT_EQ(shapeOutline(kind, square, {}).steps.back(), Path::Step::close) << kind;
    }
}

TEST(ShapeOutlines, TextArtHasTheKindsInBetween) {
    EXPECT_FALSE(isTextArt(135));
    EXPECT_TRUE(isTextArt(136));
    EXPECT_TRUE(isTextArt(175));
    EXPECT_FALSE(isTextArt(176));
}

TEST(ShapeOutlines, ShapesOnTheirSideBeginAndEndAtHalfARightAngle) {
    const PageArea wide{0, 0, 200, 100};
    const auto firstOf = [&](double degrees) {
        return shapeOutline(110, wide, {false, false, degrees * std::numbers::pi / 180}).points[0];
    };
    const auto distance = [&](double degrees) {
        return std::hypot(firstOf(degrees).x - 100, firstOf(degrees).y - 50);
    };
    EXPECT_NEAR(distance(44), 50, 0.01);
    EXPECT_NEAR(distance(46), 100, 0.01);
    EXPECT_NEAR(distance(134), 100, 0.01);
    EXPECT_NEAR(distance(136), 50, 0.01);
    EXPECT_NEAR(distance(-44), 50, 0.01);
    EXPECT_NEAR(distance(-46), 100, 0.01);
    EXPECT_NEAR(distance(226), 100, 0.01);
}

TEST(ShapeOutlines, AnArrowsHeadGrowsWithTheLineBeyondTwentyTwips) {
    EXPECT_EQ(arrowHead({0, 0}, {0, 1000}, 21).points[1], (PathPoint{-42, 916}));
    EXPECT_EQ(arrowHead({0, 0}, {0, 1000}, 5).points[1], (PathPoint{-40, 920}));
    EXPECT_EQ(arrowHead({0, 0}, {0, 1000}, 5).points[2], (PathPoint{40, 920}));
}

} // namespace
} // namespace qvnd::layout
