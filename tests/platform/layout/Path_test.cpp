#include "platform/word/layout/Path.h"

#include <gtest/gtest.h>

namespace qvnd::layout {
namespace {

using Step = Path::Step;
using Steps = std::vector<Step>;
using Points = std::vector<PathPoint>;

TEST(Paths, BeginWhereTheirFirstLineLeads) {
    Path path;
    EXPECT_TRUE(path.isEmpty());
    path.lineTo({1, 2});
    path.lineTo({3, 4});
    EXPECT_EQ(path.steps, (Steps{Step::move, Step::line}));
    EXPECT_EQ(path.points, (Points{{1, 2}, {3, 4}}));
    EXPECT_FALSE(path.isEmpty());
}

TEST(Paths, BeginAtTheFirstPointOfACurve) {
    Path path;
    path.curveTo({1, 2}, {3, 4}, {5, 6});
    EXPECT_EQ(path.steps, (Steps{Step::move, Step::curve}));
    EXPECT_EQ(path.points, (Points{{1, 2}, {1, 2}, {3, 4}, {5, 6}}));
    path.curveTo({7, 8}, {9, 10}, {11, 12});
    EXPECT_EQ(path.steps, (Steps{Step::move, Step::curve, Step::curve}));
    EXPECT_EQ(path.points.size(), 7U);
}

TEST(Paths, CloseWhatTheyHaveBegun) {
    Path path;
    path.close();
    EXPECT_TRUE(path.isEmpty());
    path.moveTo({1, 2});
    path.close();
    EXPECT_EQ(path.steps, (Steps{Step::move, Step::close}));
    EXPECT_EQ(path.points, Points({{1, 2}}));
}

} // namespace
} // namespace qvnd::layout
