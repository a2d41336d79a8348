#include "store/FontSizeToPoints.h"

#include <gtest/gtest.h>

namespace qvnd::store {

struct NamedPoints {
    const char16_t* name;
    float points;
};

class EveryFontSizeName : public ::testing::TestWithParam<NamedPoints> {};

TEST_P(EveryFontSizeName, GivesItsPoints) {
    EXPECT_EQ(FontSizeToPoints(QString::fromUtf16(GetParam().name)), GetParam().points);
}

INSTANTIATE_TEST_SUITE_P(FontSizeToPoints, EveryFontSizeName,
                         ::testing::Values(NamedPoints{u"初号", 48}, NamedPoints{u"小初", 36},
                                           NamedPoints{u"一号", 26}, NamedPoints{u"小一", 24},
                                           NamedPoints{u"二号", 22}, NamedPoints{u"小二", 18},
                                           NamedPoints{u"三号", 16}, NamedPoints{u"小三", 15},
                                           NamedPoints{u"四号", 14}, NamedPoints{u"小四", 12},
                                           NamedPoints{u"五号", 10.5F}, NamedPoints{u"小五", 9},
                                           NamedPoints{u"六号", 7.5F}, NamedPoints{u"小六", 6.5F},
                                           NamedPoints{u"七号", 5.5F}, NamedPoints{u"八号", 5}));

TEST(FontSizeToPoints, ANumberIsItsOwnPoints) {
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("12")), 12.0F);
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("10.5")), 10.5F);
    EXPECT_EQ(FontSizeToPoints(QStringLiteral(" 7 ")), 7.0F);
}

TEST(FontSizeToPoints, OuterBlanksDoNotCount) {
    EXPECT_EQ(FontSizeToPoints(QStringLiteral(" 小四 ")), 12.0F);
}

TEST(FontSizeToPoints, OnlyBlanksAreTrimmedFromAName) {
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("小四\t")), 10.0F);
}

TEST(FontSizeToPoints, AnyOtherTextIsTen) {
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("大号")), 10.0F);
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("小 四")), 10.0F);
}

TEST(FontSizeToPoints, TheEmptyTextIsTen) {
    EXPECT_EQ(FontSizeToPoints(QString()), 10.0F);
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("   ")), 10.0F);
}

TEST(FontSizeToPoints, TheTwoSmallestSizesHaveNoSmallForm) {
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("小七")), 10.0F);
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("小八")), 10.0F);
}

TEST(FontSizeToPoints, ANumberTooWideIsZeroAndRaisesNothing) {
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("1e39")), 0.0F);
    EXPECT_EQ(FontSizeToPoints(QStringLiteral("1e400")), 0.0F);
}

} // namespace qvnd::store
