#include "platform/word/layout/BorderRules.h"

#include <gtest/gtest.h>

namespace qvnd::layout {
namespace {

// One of 20 twips; `type` as in Brc80.
word::Border brcOf(std::uint8_t type) { return word::borderOf(word::Bytes{8, type, 0, 0}); }

TEST(BorderRules, AThickAndAThinStrokeStandInTheirOrderOnEachSide) {
    constexpr std::uint8_t thinWithinThick = 11;
    const word::Border border = brcOf(thinWithinThick);
    constexpr double apart = 7.5 + 15 + 10; // of their middles
    EXPECT_DOUBLE_EQ(spanOf(border), apart);
    Layer above;
    addRule(above, border, {0, 100}, {500, 100}, StrokeOrder::fromOutside);
    EXPECT_EQ(ruleCount(border), 2U);
    ASSERT_EQ(above.rules.size(), 2U);
    EXPECT_DOUBLE_EQ(above.rules[0].y1, 100 + apart) << "the inner one";
    EXPECT_DOUBLE_EQ(above.rules[0].width, 15);
    EXPECT_DOUBLE_EQ(above.rules[1].y2, 100);
    EXPECT_DOUBLE_EQ(above.rules[1].width, 20);
    Layer right;
    addRule(right, border, {300, 0}, {300, 90}, StrokeOrder::fromInside);
    ASSERT_EQ(right.rules.size(), 2U);
    EXPECT_DOUBLE_EQ(right.rules[0].x1, 300);
    EXPECT_DOUBLE_EQ(right.rules[0].width, 15);
    EXPECT_DOUBLE_EQ(right.rules[1].x1, 300 + apart);
    EXPECT_DOUBLE_EQ(right.rules[1].y2, 90);
}

TEST(BorderRules, TheFirstStrokeIsTheOuterOrTheInnerOne) {
    const word::Border border = brcOf(12);
    EXPECT_DOUBLE_EQ(firstWidth(border, StrokeOrder::fromOutside), 15);
    EXPECT_DOUBLE_EQ(firstWidth(border, StrokeOrder::fromInside), 20);
    EXPECT_DOUBLE_EQ(firstWidth({}, StrokeOrder::fromInside), 0);
    EXPECT_DOUBLE_EQ(spanOf({}), 0);
}

TEST(BorderRules, OneThatIsNotVisibleIsNone) {
    Layer layer;
    addRule(layer, brcOf(0), {0, 0}, {9, 0}, StrokeOrder::fromInside);
    EXPECT_EQ(ruleCount(brcOf(0)), 0U);
    EXPECT_TRUE(layer.rules.empty());
}

} // namespace
} // namespace qvnd::layout
