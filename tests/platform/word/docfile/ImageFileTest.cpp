#include "platform/word/docfile/pictures/ImageFile.h"

#include "support/Images.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

void expectImage(const Bytes& file, ImageKind kind, std::int32_t width, std::int32_t height) {
    const auto image = recogniseImage(file);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->kind, kind);
    EXPECT_EQ(image->width, width);
    EXPECT_EQ(image->height, height);
}

TEST(ImageFile, PngWithoutResolutionCountsNinetySixDotsAnInch) {
    expectImage(test::png(96, 192), ImageKind::png, 1440, 2880);
}

TEST(ImageFile, PngTakesItsResolution) {
    expectImage(test::png(300, 600, 11811), ImageKind::png, 1440, 2880); // 300 dpi
}

TEST(ImageFile, APictureWithoutWidthOrHeightIsNone) {
    EXPECT_FALSE(recogniseImage(test::png(0, 5)));
    EXPECT_FALSE(recogniseImage(test::png(5, 0)));
}

TEST(ImageFile, JpegTakesItsResolutionByInchOrCentimetre) {
    expectImage(test::jpeg(96, 48), ImageKind::jpeg, 1440, 720);
    expectImage(test::jpeg(72, 144, 1, 72), ImageKind::jpeg, 1440, 2880);
    expectImage(test::jpeg(100, 100, 2, 100), ImageKind::jpeg, 567, 567); // one centimetre
}

TEST(ImageFile, JpegThatTellsOnlyTheFormOfItsDotsHasNoResolution) {
    expectImage(test::jpeg(96, 96, 0, 72), ImageKind::jpeg, 1440, 1440);
    expectImage(test::jpeg(96, 96, 3, 72), ImageKind::jpeg, 1440, 1440); // a unit of nobody
}

TEST(ImageFile, ResolutionThatNobodyMeansCountsAsNone) {
    expectImage(test::jpeg(96, 96, 1, 1), ImageKind::jpeg, 1440, 1440);
    expectImage(test::png(96, 96, 1), ImageKind::png, 1440, 1440);
}

TEST(ImageFile, JpegTellsFourColourComponents) {
    EXPECT_TRUE(recogniseImage(test::jpeg(9, 9, 0, 1, 4))->cmyk);
    EXPECT_FALSE(recogniseImage(test::jpeg(9, 9))->cmyk);
}

TEST(ImageFile, BmpIsKeptWithoutItsFileHeader) {
    const Bytes file = test::bmp(96, -48);
    expectImage(file, ImageKind::dib, 1440, 720);
    EXPECT_EQ(recogniseImage(file)->data.size(), file.size() - 14);
}

TEST(ImageFile, EmfTakesItsFrame) {
    expectImage(test::emf(2540, 5080), ImageKind::emf, 1440, 2880);
}

TEST(ImageFile, AnEmfThatEndsInItsSignatureIsNone) {
    const Bytes file = test::emf(2540, 5080);
    ASSERT_GT(file.size(), 44U);
    EXPECT_FALSE(recogniseImage(ByteView(file).first(43)));
}

TEST(ImageFile, PlaceableWmfTakesItsBoxAndLosesItsHeader) {
    const Bytes file = test::placeableWmf(1000, 500, 1000);
    expectImage(file, ImageKind::wmf, 1440, 720);
    EXPECT_EQ(recogniseImage(file)->data.size(), file.size() - 22);
}

TEST(ImageFile, BareWmfTakesItsWindowAsPixels) {
    expectImage(test::bareWmf(96, 48), ImageKind::wmf, 1440, 720);
}

TEST(ImageFile, BmpTakesItsResolutionAndMayHaveTheShortHead) {
    expectImage(test::bmp(300, 600, 11811), ImageKind::dib, 1440, 2880); // 300 dpi
    const Bytes core = test::joined({test::hex("424D 00000000 00000000 1A000000 0C000000"),
                                     test::littleEndian(96, 2), test::littleEndian(48, 2),
                                     test::hex("0100 1800")});
    expectImage(core, ImageKind::dib, 1440, 720);
}

// A record of the whole head, then some before the window's.
TEST(ImageFile, BareWmfIsSearchedForItsWindowRecordByRecord) {
    const Bytes head = test::hex("0100 0900 0003 17000000 0000 05000000 0000");
    const Bytes window = test::hex("05000000 0C02 3000 6000");
    const auto found = [&](const char* before) {
        const auto image = recogniseImage(test::joined({head, test::hex(before), window}));
        return image && image->width == 1440 && image->height == 720;
    };
    EXPECT_TRUE(found(""));
    EXPECT_TRUE(found("03000000 0000"));
    EXPECT_TRUE(found("04000000 0301 0800 05000000 0B02 0000 0000"));
    EXPECT_FALSE(found("02000000 0000")) << "a record shorter than its head";
    EXPECT_FALSE(found("FFFFFF7F 0000"));
}

TEST(ImageFile, EachKindOfBareWmfIsKnownByItsHead) {
    for (const char* head : {"0100 0900 0003", "0200 0900 0003", "0100 0900 0001"}) {
        EXPECT_TRUE(recogniseImage(test::joined(
            {test::hex(head), test::hex("17000000 0000 05000000 0000 05000000 0C02 3000 6000")})))
            << head;
    }
    EXPECT_FALSE(recogniseImage(
        test::joined({test::hex("0300 0900 0003"),
                      test::hex("17000000 0000 05000000 0000 05000000 0C02 3000 6000")})));
}

TEST(ImageFile, JpegsOfEveryFrameTellTheirSizeAndOtherSegmentsDoNot) {
    for (unsigned marker = 0xBF; marker <= 0xD0; ++marker) {
        Bytes file = test::jpeg(96, 48);
        file.at(21) = static_cast<std::uint8_t>(marker);
        const bool isFrame =
            marker >= 0xC0 && marker < 0xD0 && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        EXPECT_EQ(recogniseImage(file).has_value(), isFrame) << marker;
    }
}

TEST(ImageFile, OtherFilesAreNoPicture) {
    EXPECT_FALSE(recogniseImage({}));
    EXPECT_FALSE(recogniseImage(test::ascii("GIF89a............")));
    EXPECT_FALSE(recogniseImage(test::ascii("a plain text that is long enough")));
    EXPECT_FALSE(recogniseImage(test::png(0, 10)));
}

TEST(ImageFile, EveryCutIsReadWithoutAFault) {
    for (const Bytes& file :
         {test::png(9, 9, 3780), test::jpeg(9, 9), test::bmp(9, 9), test::emf(900, 900),
          test::bareWmf(9, 9), test::placeableWmf(9, 9, 10)}) {
        EXPECT_TRUE(recogniseImage(file));
        EXPECT_FALSE(recogniseImage(ByteView(file).first(10)));
        for (std::size_t size = 0; size < file.size(); ++size) {
            recogniseImage(ByteView(file).first(size));
        }
    }
}

TEST(ImageFile, BytesMayFillTheSpaceInFrontOfAMarkerOfAJpeg) {
    Bytes file = test::jpeg(96, 48);
    ASSERT_EQ(file.at(20), 0xFF); // the frame's marker
    file.insert(file.begin() + 20, {0xFF, 0xFF});
    expectImage(file, ImageKind::jpeg, 1440, 720);
    file.insert(file.begin() + 20, {0x00, 0x12});
    expectImage(file, ImageKind::jpeg, 1440, 720);
}

} // namespace
} // namespace qvnd::word
