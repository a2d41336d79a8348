#include "MetafileBytes.h"
#include "platform/drawing/metafile/Metafile.h"

#include <gtest/gtest.h>

namespace qvnd::drawing {
namespace {

TEST(Wmf, TheFirstWindowIsTheAreaAndLaterOnesFillIt) {
    WmfBuilder wmf;
    wmf.record(0x020B, {0, 0}).record(0x020C, {100, 200});
    wmf.record(0x0214, {0, 0}).record(0x0213, {100, 200});
    wmf.record(0x020C, {50, 50}).record(0x0214, {0, 0}).record(0x0213, {50, 50});
    const Drawn result = drawn(wmf);
    EXPECT_EQ(result.picture->width, 200);
    EXPECT_EQ(result.picture->height, 100);
    EXPECT_EQ(result.shape(0).path.points[1], (VectorPoint{200, 100}));
    EXPECT_EQ(result.shape(1).path.points[1], (VectorPoint{200, 100}));
}

TEST(Wmf, WithoutAWindowTheContentIsTheArea) {
    WmfBuilder wmf;
    wmf.record(0x0214, {10, 20}).record(0x0213, {110, 220});
    const Drawn result = drawn(wmf);
    EXPECT_EQ(result.picture->left, 20);
    EXPECT_EQ(result.picture->top, 10);
    EXPECT_EQ(result.picture->width, 200);
    EXPECT_EQ(result.picture->height, 100);
}

TEST(Wmf, APlaceableHeaderWithoutAnAreaIsPassedOver) {
    WmfBuilder wmf;
    wmf.record(0x020C, {100, 200}).record(0x041B, {10, 20, 0, 0});
    const auto result = readWmf(wmf.placeable(0, 0, 0, 0, 0));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->elements.size(), 1U);
}

TEST(Wmf, TheBoundsOfAPlaceableFileAreItsWindowUntilARecordSetsAnother) {
    WmfBuilder wmf;
    wmf.record(0x041B, {60, 110, 10, 10}); // from 10,10 to 110,60
    wmf.record(0x020B, {0, 0}).record(0x020C, {1000, 1000}).record(0x041B, {500, 500, 0, 0});
    const Drawn result(readWmf(wmf.placeable(10, 10, 210, 110, 96)));
    EXPECT_EQ(result.picture->width, 200);
    EXPECT_EQ(result.picture->height, 100);
    EXPECT_EQ(result.shape(0).path.points[0], (VectorPoint{0, 0}));
    EXPECT_EQ(result.shape(0).path.points[2], (VectorPoint{100, 50}));
    EXPECT_EQ(result.shape(1).path.points[2], (VectorPoint{100, 50}));
}

TEST(Wmf, AWindowIsMovedAndScaled) {
    WmfBuilder wmf;
    wmf.record(0x020C, {100, 200}).record(0x020F, {10, 20}).record(0x041B, {20, 30, 0, 0});
    wmf.record(0x0410, {2, 1, 4, 1}).record(0x041B, {20, 30, 0, 0}); // half as high, a quarter wide
    const Drawn result = drawn(wmf);
    EXPECT_EQ(result.shape(0).path.points[2], (VectorPoint{10, 10}));
    EXPECT_EQ(result.shape(1).path.points[2], (VectorPoint{40, 20}));
}

TEST(Wmf, APixelHasItsColourAndPlace) {
    WmfBuilder wmf;
    wmf.record(0x020C, {100, 200}).record(0x041F, {0x00FF, 0, 7, 5});
    const VectorShape pixel = drawn(wmf).shape(0);
    EXPECT_EQ(pixel.fill, 0xFF0000U);
    EXPECT_EQ(pixel.path.points[0], (VectorPoint{5, 7}));
}

TEST(Wmf, ARegionIsFilledOrPaintedWhereItStoodWhenItWasMade) {
    WmfBuilder wmf;
    wmf.record(0x020C, {100, 200}).record(0x02FC, {0, 0x00FF, 0, 0});
    wmf.record(0x06FF, {0, 6, 0, 0, 0, 1, 2, 0, 0, 50, 60, 2, 20, 40, 30, 50, 2});
    wmf.record(0x020B, {10, 10}).record(0x0228, {1, 0}).record(0x012B, {1});
    const Drawn result = drawn(wmf);
    EXPECT_EQ(result.shape(0).fill, 0xFF0000U);
    EXPECT_EQ(result.shape(0).path.points[0], (VectorPoint{30, 20}));
    EXPECT_EQ(result.shape(0).path.points[2], (VectorPoint{50, 40}));
    EXPECT_EQ(result.shape(1).fill, 0xFFFFFFU) << "by the brush that is selected";
}

TEST(Wmf, ARegionThatIsCutOffTakesItsPlaceAmongTheObjects) {
    WmfBuilder wmf;
    wmf.record(0x020C, {100, 200}).record(0x06FF, {0, 6, 0, 0, 0, 9, 2, 0, 0, 50, 60, 2, 20});
    wmf.record(0x02FC, {0, 0x00FF, 0, 0}).record(0x012D, {1}).record(0x041B, {10, 20, 0, 0});
    EXPECT_EQ(drawn(wmf).shape(0).fill, 0xFF0000U);
}

TEST(Wmf, ANewObjectTakesTheFirstFreePlace) {
    WmfBuilder wmf;
    wmf.record(0x020C, {100, 200});
    wmf.record(0x02FC, {0, 0x00FF, 0, 0}).record(0x02FC, {0, 0, 0x00FF, 0});     // red, blue
    wmf.record(0x01F0, {0}).record(0x02FC, {0, static_cast<int>(0xFF00), 0, 0}); // green
    wmf.record(0x012D, {0}).record(0x041B, {10, 20, 0, 0});
    wmf.record(0x012D, {1}).record(0x041B, {10, 20, 0, 0});
    const Drawn result = drawn(wmf);
    EXPECT_EQ(result.shape(0).fill, 0x00FF00U);
    EXPECT_EQ(result.shape(1).fill, 0x0000FFU);
}

TEST(Wmf, ChineseTextIsReadInItsCodePageWithTheAdvancesOfBothBytes) {
    WmfBuilder wmf;
    wmf.record(0x020C, {100, 200}).font("Arial", -12, 0x86).select(0);
    wmf.text(3, 4,
             "\xCA\xA9"
             "a\xB9\xA4",
             {6, 7, 5, 6, 6});
    const VectorText text = drawn(wmf).text(0);
    EXPECT_EQ(text.text, u"施a工");
    EXPECT_EQ(text.advances, (std::vector<double>{13, 5, 12}));
    EXPECT_EQ(text.at, (VectorPoint{3, 4}));
}

TEST(Wmf, TheSmallestBreachOfARecordsSizeEndsTheFile) {
    WmfBuilder wmf;
    wmf.record(0x020C, {100, 200}).record(0x041B, {10, 20, 0, 0});
    word::LittleEndianWriter tooShort;
    tooShort.u32(2);
    tooShort.u16(0x041B);
    wmf.raw(tooShort.data()).record(0x041B, {10, 20, 0, 0});
    EXPECT_EQ(drawn(wmf).count(), 1U);
}

TEST(Wmf, AFileThatIsNoneIsRefused) {
    EXPECT_FALSE(readWmf(word::Bytes(40, 0x41)));
    EXPECT_FALSE(readWmf(word::Bytes{1, 0, 9, 0}));
    EXPECT_FALSE(readEmf({}));
}

} // namespace
} // namespace qvnd::drawing
