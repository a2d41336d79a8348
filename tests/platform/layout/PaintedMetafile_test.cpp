#include "MetafileBytes.h"
#include "platform/drawing/PagePainter.h"
#include "platform/drawing/VectorPainter.h"
#include "platform/drawing/metafile/Bitmap.h"
#include "platform/word/docfile/pictures/Picture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace qvnd::drawing {
namespace {

using metafile::Bitmap;

TEST(Bitmap, OneBitAPixelNamesColoursAndRowsStandFromBelow) {
    word::LittleEndianWriter file;
    file.bytes(test::bitmapHead(2, 2, 1));
    file.u32(0x000000FF); // blue
    file.u32(0x00FF0000); // red
    for (const unsigned part : {0x80U, 0U, 0U, 0U, 0x40U, 0U, 0U, 0U}) {
        file.u8(part);
    }
    const auto bitmap = Bitmap::read(file.data(), {});
    ASSERT_TRUE(bitmap);
    const PixelImage image = bitmap->image({0, 0, 2, 2}, false);
    const std::vector<std::uint8_t> upper{255, 0, 0, 255, 0, 0, 255, 255};
    EXPECT_EQ(std::vector<std::uint8_t>(image.pixels.begin(), image.pixels.begin() + 8), upper);
    const auto part = bitmap->inside({1, 0, 5, 1});
    ASSERT_TRUE(part);
    EXPECT_EQ(part->width, 1);
    EXPECT_FALSE(bitmap->inside({2, 0, 1, 1}));
}

// A bitmap in runs of colours 0 black, 1 blue and 2 red.
word::Bytes inRuns(int width, int height, unsigned depth, std::initializer_list<unsigned> runs) {
    constexpr std::size_t compressionAt = 16;
    constexpr std::size_t coloursAt = 32;
    word::Bytes head = test::bitmapHead(width, height, depth);
    head[compressionAt] = depth == 8 ? 1 : 2;
    head[coloursAt] = 3;
    word::LittleEndianWriter file;
    file.bytes(head);
    for (const unsigned colour : {0x000000U, 0x0000FFU, 0xFF0000U}) {
        file.u32(colour);
    }
    for (const unsigned byte : runs) {
        file.u8(byte);
    }
    return file.take();
}

// A letter a pixel, "." for one that is clear; nothing for a bitmap that is refused.
std::string lettersOf(const word::Bytes& file) {
    const auto bitmap = Bitmap::read(file, {});
    if (!bitmap) {
        return "";
    }
    const PixelImage image = bitmap->image({0, 0, bitmap->width(), bitmap->height()}, false);
    std::string letters;
    for (std::size_t at = 0; at < image.pixels.size(); at += 4) {
        const bool isBlue = image.pixels[at] == 255;
        const char colour = isBlue ? 'b' : (image.pixels[at + 2] == 255 ? 'r' : 'k');
        letters.push_back(image.pixels[at + 3] == 0 ? '.' : colour);
    }
    return letters;
}

TEST(BitmapInRuns, BytesAreRepeatedOrTheirOwnAndWhatIsPassedOverStaysClear) {
    const auto file = inRuns(4, 3, 8, {4, 1, 0, 0,       // a row of blue, the lowest
                                       0, 3, 2, 1, 0, 0, // three of their own, filled up
                                       0, 2, 0, 1, 1, 2, // one row up, one red
                                       0, 1, 4, 1});     // the end
    EXPECT_EQ(lettersOf(file), "...r"
                               "rbk."
                               "bbbb");
}

TEST(BitmapInRuns, HalfBytesTakeTurns) {
    EXPECT_EQ(lettersOf(inRuns(6, 1, 4, {3, 0x12, 0, 3, 0x21, 0x20, 0, 1})), "brbrbr");
}

TEST(BitmapInRuns, WhatLeavesTheBitmapIsCutAndBrokenBytesEndIt) {
    EXPECT_EQ(lettersOf(inRuns(2, 1, 8, {5, 1, 0, 0, 2, 2})), "bb");
    EXPECT_EQ(lettersOf(inRuns(3, 1, 8, {1, 2, 0, 5, 1})), "r..");
    EXPECT_EQ(lettersOf(inRuns(3, 1, 8, {1, 2, 0, 2, 1})), "r..");
    EXPECT_EQ(lettersOf(inRuns(1, 1, 8, {1, 9})), "k") << "a colour that it does not have";
}

TEST(BitmapInRuns, NoMoreMemoryIsAskedForThanItsBytesCanFill) {
    const std::initializer_list<unsigned> two{0, 1};
    const std::initializer_list<unsigned> eight{0, 0, 0, 0, 0, 0, 0, 1};
    EXPECT_TRUE(Bitmap::read(inRuns(1024, 1024, 8, two), {})) << "a million in any case";
    EXPECT_FALSE(Bitmap::read(inRuns(1024, 1025, 8, two), {}));
    EXPECT_TRUE(Bitmap::read(inRuns(1024, 1025, 8, eight), {}));
}

TEST(BitmapInRuns, TheDepthAndTheDirectionAreThoseOfRuns) {
    word::Bytes file = inRuns(1, 1, 8, {1, 1});
    EXPECT_TRUE(Bitmap::read(file, {}));
    file[16] = 2; // half bytes of eight bits
    EXPECT_FALSE(Bitmap::read(file, {}));
    EXPECT_FALSE(Bitmap::read(inRuns(1, -1, 8, {1, 1}), {}));
}

TEST(Bitmap, WhatIsLargerThanItsBytesOrThanAnyPictureIsRefused) {
    word::Bytes file = test::bitmapHead(2, 1, 32);
    file.resize(file.size() + 8);
    EXPECT_TRUE(Bitmap::read(file, {}));
    file.pop_back();
    EXPECT_FALSE(Bitmap::read(file, {}));
    EXPECT_FALSE(Bitmap::read(test::bitmapHead(100000, 100000, 1), {}));
    EXPECT_FALSE(Bitmap::read(test::bitmapHead(0, 1, 32), {}));
    EXPECT_FALSE(Bitmap::read(test::bitmapHead(1, 1, 7), {}));
}

// A document's picture of that metafile.
word::DataBlob blobOf(const word::Bytes& file) {
    const auto picture = word::Picture::fromImage(file);
    EXPECT_TRUE(picture);
    return picture ? picture->blob() : nullptr;
}

// A page of 1000 by 500 twips with that picture.
layout::Page pageWith(layout::PlacedPicture picture) {
    layout::Page page;
    page.width = 1000;
    page.height = 500;
    page.layer.pictures.push_back(std::move(picture));
    return page;
}

TEST(MetafileBlob, AMetafileOfADocumentIsInflatedAndCropped) {
    EmfBuilder emf;
    emf.record(43, {0, 0, 1000, 500});
    auto picture = word::Picture::fromImage(emf.file());
    ASSERT_TRUE(picture);
    picture->setCrop(word::Picture::Side::left, 0.25);
    const auto result = readMetafile(picture->blob());
    ASSERT_TRUE(result);
    EXPECT_NEAR(result->left, 250, 1);
    EXPECT_NEAR(result->width, 750, 1);
    EXPECT_EQ(result->elements.size(), 1U);
}

TEST(MetafileBlob, AMetafileOfWhichNothingIsDrawnIsNone) {
    EmfBuilder emf;
    EXPECT_FALSE(readMetafile(blobOf(emf.file())));
}

TEST(MetafileBlob, ABlobWithoutAMetafileHoldsNone) {
    EXPECT_FALSE(readMetafile(nullptr));
    EXPECT_FALSE(readMetafile(std::make_shared<const word::Bytes>(word::Bytes(100, 1))));
}

TEST(PaintedMetafile, FillsItsPlaceOnThePage) {
    EmfBuilder emf;
    emf.record(39, {2, 0, 0x0000FF, 0}).record(37, {2}).record(37, {0x80000008});
    emf.record(43, {500, 0, 1000, 500});
    const layout::Page page = pageWith({200, 100, 400, 200, blobOf(emf.file())});
    FontFaces fonts(FontChoice::here);
    PagePainter painter(fonts, nullptr);
    const PixelImage image = painter.image(page, 100);
    const auto red = [&](int x, int y) {
        const auto* pixel = image.pixels.data() + (static_cast<std::size_t>(y) * 100 + x) * 4U;
        return pixel[2] == 255 && pixel[1] == 0;
    };
    EXPECT_TRUE(red(42, 12));
    EXPECT_TRUE(red(58, 28));
    EXPECT_FALSE(red(38, 20));
    EXPECT_FALSE(red(62, 20));
    EXPECT_FALSE(red(50, 32));
}

// Whatever is drawn in the metafile, seen 100 pixels wide and 50 high; its units are a tenth of
// one.
PixelImage painted(EmfBuilder& emf) {
    FontFaces fonts(FontChoice::here);
    const auto picture = readEmf(emf.file());
    EXPECT_TRUE(picture);
    return picture ? imageOf(*picture, 100, 50, fonts) : PixelImage();
}

std::uint32_t colourAt(const PixelImage& image, std::size_t x, std::size_t y) {
    const auto* pixel = image.pixels.data() + (y * 100 + x) * 4;
    return (std::uint32_t{pixel[2]} << 16) | (std::uint32_t{pixel[1]} << 8) | pixel[0];
}

struct Seen {
    std::size_t x;
    std::size_t y;
    std::uint32_t colour;
};

void expectColours(const PixelImage& image, std::initializer_list<Seen> spots) {
    for (const Seen& spot : spots) {
        EXPECT_EQ(colourAt(image, spot.x, spot.y), spot.colour) << spot.x << ", " << spot.y;
    }
}

EmfBuilder redWithoutPen() {
    EmfBuilder emf;
    emf.record(39, {2, 0, 0x0000FF, 0}).record(37, {2}).record(37, {0x80000008});
    return emf;
}

TEST(PaintedMetafile, CoordinatesFarOutsideReachBeyondTheEdge) {
    EmfBuilder emf = redWithoutPen();
    emf.record(43, {-900'000'000, -900'000'000, 900'000'000, 900'000'000});
    expectColours(painted(emf), {{0, 0, 0xFF0000U}, {99, 49, 0xFF0000U}});
}

TEST(PaintedMetafile, CharactersLargerThanAnyPageAreLeftOutAndNothingElse) {
    EmfBuilder emf = redWithoutPen();
    emf.record(18, {1}).font(u"Arial", -900'000'000).text(0, 0, u"I", {});
    emf.record(43, {0, 0, 100, 100});
    expectColours(painted(emf), {{5, 5, 0xFF0000U}, {50, 25, 0xFFFFFFU}});
}

TEST(PaintedMetafile, ALineOfVeryManyDashesIsSolid) {
    const auto inkOf = [](int length) {
        EmfBuilder emf;
        emf.record(38, {1, 1, 10, 0, 0}).record(37, {1}); // dashed, a pixel wide
        emf.record(27, {0, 255}).record(54, {length, 255});
        const PixelImage image = painted(emf);
        int ink = 0;
        for (std::size_t x = 0; x < 100; ++x) {
            ink += colourAt(image, x, 25) < 0x808080 ? 1 : 0;
        }
        return ink;
    };
    EXPECT_LT(inkOf(1000), 90);
    EXPECT_EQ(inkOf(900'000'000), 100);
}

TEST(PaintedMetafile, ATileIsRepeated) {
    word::LittleEndianWriter content;
    for (const unsigned part : {2U, 0U, 32U, 40U, 72U, 8U}) {
        content.u32(part);
    }
    content.bytes(redAndBlue());
    EmfBuilder emf = redWithoutPen();
    emf.record(94, content.data()).record(37, {2}).record(43, {0, 0, 1000, 500});
    const PixelImage image = painted(emf);
    for (const std::size_t x : {0U, 40U, 98U}) {
        EXPECT_EQ(colourAt(image, x, 30), 0xFF0000U) << x;
        EXPECT_EQ(colourAt(image, x + 1, 30), 0x0000FFU) << x;
    }
}

TEST(PaintedMetafile, WhatIsTakenOutOfTheClipStays) {
    EmfBuilder emf = redWithoutPen();
    emf.record(29, {200, 100, 600, 300}).record(43, {0, 0, 1000, 500});
    expectColours(
        painted(emf),
        {{10, 20, 0xFF0000U}, {40, 20, 0xFFFFFFU}, {70, 20, 0xFF0000U}, {40, 40, 0xFF0000U}});
}

TEST(PaintedMetafile, AnInvertedAreaHasTheOppositeColour) {
    EmfBuilder emf = redWithoutPen();
    emf.record(43, {0, 0, 500, 500});
    emf.record(
        76, {0, 0, 9, 9, 250, 0, 500, 500, 0x00550009, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    expectColours(
        painted(emf),
        {{10, 20, 0xFF0000U}, {40, 20, 0x00FFFFU}, {60, 20, 0x000000U}, {90, 20, 0xFFFFFFU}});
}

TEST(PaintedMetafile, TheBackgroundOfTextLiesBehindItsCharacters) {
    EmfBuilder emf;
    emf.record(25, {0x00FF00}).record(24, {0x0000FF}).font(u"Arial", -300);
    emf.record(22, {24}).text(100, 400, u"I", {600}); // on its baseline
    const PixelImage image = painted(emf);
    EXPECT_EQ(colourAt(image, 60, 25), 0x00FF00U);
    EXPECT_EQ(colourAt(image, 60, 5), 0xFFFFFFU) << "above the cell";
    EXPECT_EQ(colourAt(image, 80, 25), 0xFFFFFFU) << "behind the text's end";
    bool isShown = false;
    for (std::size_t x = 10; x < 30; ++x) {
        isShown = isShown || colourAt(image, x, 30) == 0xFF0000U;
    }
    EXPECT_TRUE(isShown);
}

TEST(PaintedMetafile, EachElementIsCutByItsOwnClip) {
    EmfBuilder emf;
    emf.record(37, {0x80000008}).record(37, {0x80000004}); // a black brush
    emf.record(33).record(30, {0, 0, 200, 500}).record(43, {0, 0, 1000, 100});
    emf.record(34, {-1}).record(43, {0, 100, 1000, 200});
    emf.record(33).record(30, {0, 0, 200, 500}).record(43, {0, 200, 1000, 300});
    layout::Page page = pageWith({0, 0, 1000, 500, blobOf(emf.file())});
    page.layer.rules.push_back({0, 450, 1000, 450, 20, {}}); // behind it nothing is cut
    FontFaces fonts(FontChoice::here);
    PagePainter painter(fonts, nullptr);
    const PixelImage image = painter.image(page, 100);
    const auto isBlack = [&](int x, int y) {
        return image.pixels[(static_cast<std::size_t>(y) * 100 + x) * 4U] == 0;
    };
    EXPECT_TRUE(isBlack(10, 5));
    EXPECT_FALSE(isBlack(50, 5));
    EXPECT_TRUE(isBlack(50, 15));
    EXPECT_TRUE(isBlack(10, 25));
    EXPECT_FALSE(isBlack(50, 25));
    EXPECT_TRUE(isBlack(50, 45));
}

TEST(PaintedMetafile, ItsTextCanBeFoundInAPdf) {
    EmfBuilder emf;
    emf.font(u"serif", -100).text(100, 100, u"H", {100});
    const layout::Page page = pageWith({0, 0, 1000, 500, blobOf(emf.file())});
    FontFaces fonts(FontChoice::here);
    PagePainter painter(fonts, nullptr);
    std::string bytes;
    const auto pdf = painter.pdf([&](word::ByteView part) {
        bytes.append(reinterpret_cast<const char*>(part.data()), part.size());
    });
    pdf->add(page);
    pdf->finish();
    EXPECT_NE(bytes.find("/FontDescriptor"), std::string::npos);
    EXPECT_NE(bytes.find("/ToUnicode"), std::string::npos);
}

} // namespace
} // namespace qvnd::drawing
