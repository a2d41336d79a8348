#include "platform/drawing/metafile/Metafile.h"

#include "MetafileBytes.h"
#include "platform/drawing/PagePainter.h"
#include "platform/drawing/metafile/Bitmap.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/Picture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace qvnd::drawing {
namespace {

using metafile::Bitmap;
using Step = VectorPath::Step;

// What a file comes to, and its elements by their kind.
struct Drawn {
    explicit Drawn(std::optional<VectorPicture> read) : picture(std::move(read)) {
        EXPECT_TRUE(picture);
    }
    std::size_t count() const { return picture ? picture->elements.size() : 0; }
    template <class Kind>
    Kind at(std::size_t index) const {
        const bool isKind =
            index < count() && std::holds_alternative<Kind>(picture->elements[index].what);
        EXPECT_TRUE(isKind) << index;
        return isKind ? std::get<Kind>(picture->elements[index].what) : Kind();
    }
    VectorShape shape(std::size_t index) const { return at<VectorShape>(index); }
    VectorText text(std::size_t index) const { return at<VectorText>(index); }
    VectorImage image(std::size_t index) const { return at<VectorImage>(index); }

    std::optional<VectorPicture> picture;
};

Drawn drawn(EmfBuilder& builder) { return Drawn(readEmf(builder.file())); }
Drawn drawn(WmfBuilder& builder) { return Drawn(readWmf(builder.file())); }

TEST(Emf, TheFrameIsTheAreaInPixelsOfTheDevice) {
    EmfBuilder emf;
    const Drawn result = drawn(emf);
    EXPECT_EQ(result.picture->width, 1000);
    EXPECT_EQ(result.picture->height, 500);
    EXPECT_EQ(result.count(), 0U);
}

TEST(Emf, ARectangleIsFilledByTheBrushAndOutlinedByThePen) {
    EmfBuilder emf;
    emf.record(38, {1, 0, 4, 0, 0x0000FF}).record(37, {1});
    emf.record(39, {2, 0, 0x00FF00, 0}).record(37, {2}).record(43, {10, 20, 110, 220});
    const VectorShape shape = drawn(emf).shape(0);
    EXPECT_EQ(shape.fill, 0x00FF00U);
    ASSERT_TRUE(shape.pen);
    EXPECT_EQ(shape.pen->colour, 0xFF0000U);
    EXPECT_EQ(shape.pen->width, 4);
    ASSERT_EQ(shape.path.points.size(), 4U);
    EXPECT_EQ(shape.path.points[2], (VectorPoint{110, 220}));
}

TEST(Emf, TheEmptyPenAndBrushOfTheStockDrawNothing) {
    EmfBuilder emf;
    emf.record(37, {0x80000005}).record(37, {0x80000008}).record(43, {10, 20, 110, 220});
    EXPECT_EQ(drawn(emf).count(), 0U);
}

TEST(Emf, TheWindowIsMappedToTheViewport) {
    EmfBuilder emf;
    emf.record(17, {8}).record(10, {100, 100}).record(9, {200, 200});
    emf.record(12, {10, 20}).record(11, {1000, 500});
    emf.record(27, {100, 100}).record(54, {300, 200});
    const VectorShape line = drawn(emf).shape(0);
    ASSERT_EQ(line.path.points.size(), 2U);
    EXPECT_EQ(line.path.points[0], (VectorPoint{10, 20}));
    EXPECT_EQ(line.path.points[1], (VectorPoint{1010, 270}));
}

TEST(Emf, AnIsotropicWindowTakesTheSmallerScaleBothWays) {
    EmfBuilder emf;
    emf.record(17, {7}).record(9, {100, 100}).record(11, {1000, 500});
    emf.record(27, {0, 0}).record(54, {100, 100});
    EXPECT_EQ(drawn(emf).shape(0).path.points[1], (VectorPoint{500, 500}));
}

TEST(Emf, AFixedUnitCountsUpwards) {
    EmfBuilder emf;
    emf.record(17, {2}).record(12, {0, 500}); // tenths of a millimetre
    emf.record(27, {0, 0}).record(54, {100, 200});
    EXPECT_EQ(drawn(emf).shape(0).path.points[1], (VectorPoint{100, 300}));
}

TEST(Emf, AMappingOfTheWorldComesBeforeTheWindow) {
    const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    EmfBuilder emf;
    emf.record(17, {8}).record(9, {10, 10}).record(11, {20, 20});
    emf.record(35, {bits(0), bits(1), bits(-1), bits(0), bits(100), bits(0)}); // a quarter turn
    emf.record(36, {bits(2), bits(0), bits(0), bits(2), bits(0), bits(0), 2});
    emf.record(27, {0, 0}).record(54, {10, 0});
    const VectorShape line = drawn(emf).shape(0);
    EXPECT_EQ(line.path.points[0], (VectorPoint{200, 0}));
    EXPECT_EQ(line.path.points[1], (VectorPoint{200, 40}));
}

TEST(Emf, ARestoredStateIsTheOneThatWasSaved) {
    EmfBuilder emf;
    emf.record(33).record(39, {2, 0, 0x0000FF, 0}).record(37, {2}).record(33);
    emf.record(34, {-2}).record(43, {0, 0, 10, 10});
    EXPECT_EQ(drawn(emf).shape(0).fill, 0xFFFFFFU);
}

TEST(Emf, ShortPolygonsAreFilledTogether) {
    word::LittleEndianWriter content;
    content.zeros(16);
    for (const unsigned count : {2U, 7U, 3U, 4U}) {
        content.u32(count);
    }
    for (const int part : {0, 0, 10, 0, 0, 10, 20, 20, 30, 20, 30, 30, -20, 30}) {
        content.u16(static_cast<unsigned>(part) & 0xFFFFU);
    }
    EmfBuilder emf;
    emf.record(91, content.data());
    const Drawn result = drawn(emf);
    ASSERT_EQ(result.count(), 1U);
    const VectorPath path = result.shape(0).path;
    EXPECT_EQ(path.steps, (std::vector{Step::move, Step::line, Step::line, Step::close, Step::move,
                                       Step::line, Step::line, Step::line, Step::close}));
    EXPECT_EQ(path.points.back(), (VectorPoint{-20, 30}));
}

TEST(Emf, WhatIsDrawnInABracketMakesAPath) {
    EmfBuilder emf;
    emf.record(59).record(27, {0, 0}).record(54, {10, 0}).record(54, {10, 10}).record(61);
    emf.record(60).record(62, {0, 0, 0, 0});
    const Drawn result = drawn(emf);
    ASSERT_EQ(result.count(), 1U);
    EXPECT_TRUE(result.shape(0).fill);
    EXPECT_FALSE(result.shape(0).pen);
    EXPECT_EQ(result.shape(0).path.steps,
              (std::vector{Step::move, Step::line, Step::line, Step::close}));
}

TEST(Emf, AClipGoesWithWhatFollowsUntilItIsTakenBack) {
    EmfBuilder emf;
    emf.record(43, {0, 0, 10, 10}).record(33).record(30, {0, 0, 50, 50});
    emf.record(43, {0, 0, 10, 10}).record(34, {-1}).record(43, {0, 0, 10, 10});
    const Drawn result = drawn(emf);
    ASSERT_EQ(result.count(), 3U);
    EXPECT_FALSE(result.picture->elements[0].clip);
    ASSERT_TRUE(result.picture->elements[1].clip);
    EXPECT_EQ(result.picture->elements[1].clip->path.points[2], (VectorPoint{50, 50}));
    EXPECT_FALSE(result.picture->elements[2].clip);
}

TEST(Emf, TextHasItsPlaceFontAndAdvances) {
    EmfBuilder emf;
    emf.font(u"Times New Roman", -48, 700).record(24, {0x0000FF}).record(22, {24});
    emf.text(30, 40, u"F = ma", {10, 11, 12, 13, 14, 15});
    const VectorText text = drawn(emf).text(0);
    EXPECT_EQ(text.text, u"F = ma");
    EXPECT_EQ(text.at, (VectorPoint{30, 40}));
    EXPECT_EQ(text.font, u"Times New Roman");
    EXPECT_EQ(text.size, 48);
    EXPECT_FALSE(text.isLineHeight);
    EXPECT_TRUE(text.bold);
    EXPECT_EQ(text.colour, 0xFF0000U);
    EXPECT_EQ(text.down, VectorText::Down::baseline);
    EXPECT_EQ(text.advances, (std::vector<double>{10, 11, 12, 13, 14, 15}));
}

TEST(Emf, APositiveHeightIsThatOfTheLineAndAnglesCountAgainstTheClock) {
    EmfBuilder emf;
    emf.font(u"Arial", 50, 400, 900).text(0, 0, u"x", {});
    const VectorText text = drawn(emf).text(0);
    EXPECT_TRUE(text.isLineHeight);
    EXPECT_EQ(text.size, 50);
    EXPECT_NEAR(text.angle, std::numbers::pi / 2, 1e-6);
    EXPECT_TRUE(text.advances.empty());
}

TEST(Emf, TextOfASymbolFontIsShownAsWhatItStandsFor) {
    EmfBuilder emf;
    emf.font(u"Symbol", -20).text(0, 0, u"a\uF062\u00B3", {});
    EXPECT_EQ(drawn(emf).text(0).text, u"αβ≥");
}

TEST(Emf, NumbersOfGlyphsAreNoText) {
    EmfBuilder emf;
    emf.font(u"Arial", -20).text(0, 0, u"abc", {}, 0x10);
    EXPECT_EQ(drawn(emf).count(), 0U);
}

TEST(Emf, TextThatMovesOnGoesOnWhereItEnded) {
    EmfBuilder emf;
    emf.font(u"Arial", -20).record(22, {1}).record(27, {5, 7});
    emf.text(0, 0, u"ab", {10, 20}).text(0, 0, u"c", {10});
    const Drawn result = drawn(emf);
    EXPECT_EQ(result.text(0).at, (VectorPoint{5, 7}));
    EXPECT_EQ(result.text(1).at, (VectorPoint{35, 7}));
}

TEST(Emf, ABitmapIsStretchedToItsPlace) {
    word::LittleEndianWriter content;
    content.zeros(16);
    for (const unsigned part :
         {100U, 200U, 0U, 0U, 2U, 1U, 80U, 40U, 120U, 8U, 0U, 0xCC0020U, 50U, 60U}) {
        content.u32(part);
    }
    content.u32(40);
    content.u32(2);
    content.u32(1);
    content.u16(1);
    content.u16(24);
    content.zeros(24);
    for (const unsigned part : {0U, 0U, 255U, 255U, 0U, 0U, 0U, 0U}) {
        content.u8(part);
    }
    EmfBuilder emf;
    emf.record(81, content.data());
    const VectorImage image = drawn(emf).image(0);
    EXPECT_EQ(image.corner, (VectorPoint{100, 200}));
    EXPECT_EQ(image.across, (VectorPoint{50, 0}));
    EXPECT_EQ(image.down, (VectorPoint{0, 60}));
    EXPECT_EQ(image.image.pixels,
              (std::vector<std::uint8_t>{0, 0, 255, 255, 255, 0, 0, 255})); // red, blue
}

TEST(Emf, AnArcTurnsAgainstTheClock) {
    EmfBuilder emf;
    emf.record(45, {0, 0, 100, 100, 100, 50, 50, 0}); // from the right to the top
    const VectorPath path = drawn(emf).shape(0).path;
    ASSERT_EQ(path.steps, (std::vector{Step::move, Step::curve}));
    EXPECT_NEAR(path.points.front().x, 100, 0.01);
    EXPECT_NEAR(path.points.back().y, 0, 0.01);
    EXPECT_NEAR(path.points[1].y, 22.4, 0.1); // bulges outwards
}

TEST(Emf, ARecordThatIsTooShortIsLeftOutAndThoseBehindItAreDrawn) {
    EmfBuilder emf;
    emf.record(43, {1, 2}).record(91, {0, 0, 0, 0, 0x7FFFFFFF, 3}).record(43, {0, 0, 10, 10});
    EXPECT_EQ(drawn(emf).count(), 1U);
}

TEST(Emf, AFileThatEndsEarlyShowsWhatStoodBefore) {
    EmfBuilder emf;
    emf.record(43, {0, 0, 10, 10}).record(43, {0, 0, 20, 20});
    word::Bytes file = emf.file();
    file.resize(file.size() - 30);
    const auto result = readEmf(file);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->elements.size(), 1U);
    file.resize(60);
    EXPECT_FALSE(readEmf(file));
}

TEST(Emf, EveryFileThatIsCutOrChangedIsReadToItsEnd) {
    EmfBuilder emf;
    emf.font(u"Arial", -20).text(0, 0, u"abc", {1, 2, 3}).record(59).record(43, {0, 0, 9, 9});
    emf.record(60).record(67, {5}).record(30, {0, 0, 5, 5}).record(43, {0, 0, 10, 10});
    const word::Bytes file = emf.file();
    std::size_t shown = 0;
    for (std::size_t at = 0; at < file.size(); ++at) {
        for (const std::uint8_t value : {0x00, 0x7F, 0xFF}) {
            word::Bytes changed = file;
            changed[at] = value;
            const auto result = readEmf(changed);
            shown += result ? 1 : 0;
        }
    }
    EXPECT_GT(shown, file.size()); // most changes leave a drawing
}

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

TEST(Wmf, APlaceableHeaderIsPassedOver) {
    WmfBuilder wmf;
    wmf.record(0x020C, {100, 200}).record(0x041B, {10, 20, 0, 0});
    word::Bytes file = wmf.file();
    word::LittleEndianWriter head;
    head.u32(0x9AC6CDD7);
    head.zeros(18);
    const word::Bytes bytes = head.take();
    file.insert(file.begin(), bytes.begin(), bytes.end());
    const auto result = readWmf(file);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->elements.size(), 1U);
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
    wmf.record(0x020C, {100, 200}).font(0, "Arial", -12, 0x86);
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
    wmf.bytes(tooShort.data()).record(0x041B, {10, 20, 0, 0});
    EXPECT_EQ(drawn(wmf).count(), 1U);
}

TEST(Wmf, AFileThatIsNoneIsRefused) {
    EXPECT_FALSE(readWmf(word::Bytes(40, 0x41)));
    EXPECT_FALSE(readWmf(word::Bytes{1, 0, 9, 0}));
    EXPECT_FALSE(readEmf({}));
}

word::Bytes bitmapHead(int width, int height, unsigned depth, unsigned used = 0) {
    word::LittleEndianWriter head;
    head.u32(40);
    head.u32(static_cast<std::uint32_t>(width));
    head.u32(static_cast<std::uint32_t>(height));
    head.u16(1);
    head.u16(depth);
    head.zeros(16);
    head.u32(used);
    head.u32(0);
    return head.take();
}

TEST(Bitmap, OneBitAPixelNamesColoursAndRowsStandFromBelow) {
    word::LittleEndianWriter file;
    file.bytes(bitmapHead(2, 2, 1));
    file.u32(0x000000FF); // blue
    file.u32(0x00FF0000); // red
    for (const unsigned part : {0x80U, 0U, 0U, 0U, 0x40U, 0U, 0U, 0U}) {
        file.u8(part);
    }
    const auto bitmap = Bitmap::read(file.data(), {});
    ASSERT_TRUE(bitmap);
    const auto image = bitmap->image({0, 0, 2, 2}, false);
    ASSERT_TRUE(image);
    const std::vector<std::uint8_t> upper{255, 0, 0, 255, 0, 0, 255, 255};
    EXPECT_EQ(std::vector<std::uint8_t>(image->pixels.begin(), image->pixels.begin() + 8), upper);
    const auto part = bitmap->image({1, 0, 5, 1}, false);
    ASSERT_TRUE(part);
    EXPECT_EQ(part->width, 1);
    EXPECT_FALSE(bitmap->image({2, 0, 1, 1}, false));
}

TEST(Bitmap, WhatIsLargerThanItsBytesOrThanAnyPictureIsRefused) {
    word::Bytes file = bitmapHead(2, 1, 32);
    file.resize(file.size() + 8);
    EXPECT_TRUE(Bitmap::read(file, {}));
    file.pop_back();
    EXPECT_FALSE(Bitmap::read(file, {}));
    EXPECT_FALSE(Bitmap::read(bitmapHead(100000, 100000, 1), {}));
    EXPECT_FALSE(Bitmap::read(bitmapHead(0, 1, 32), {}));
    EXPECT_FALSE(Bitmap::read(bitmapHead(1, 1, 7), {}));
}

// A document's picture of that metafile.
word::DataBlob blobOf(const word::Bytes& file) {
    const auto picture = word::Picture::fromImage(file);
    EXPECT_TRUE(picture);
    return picture ? picture->blob() : nullptr;
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
    layout::Page page;
    page.width = 1000;
    page.height = 500;
    page.layer.pictures.push_back({200, 100, 400, 200, blobOf(emf.file())});
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

TEST(PaintedMetafile, EachElementIsCutByItsOwnClip) {
    EmfBuilder emf;
    emf.record(37, {0x80000008}).record(37, {0x80000004}); // a black brush
    emf.record(33).record(30, {0, 0, 200, 500}).record(43, {0, 0, 1000, 100});
    emf.record(34, {-1}).record(43, {0, 100, 1000, 200});
    emf.record(33).record(30, {0, 0, 200, 500}).record(43, {0, 200, 1000, 300});
    layout::Page page;
    page.width = 1000;
    page.height = 500;
    page.layer.pictures.push_back({0, 0, 1000, 500, blobOf(emf.file())});
    page.layer.rules.push_back({0, 450, 1000, 450, 20, false, {}}); // behind it nothing is cut
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
    layout::Page page;
    page.width = 1000;
    page.height = 500;
    page.layer.pictures.push_back({0, 0, 1000, 500, blobOf(emf.file())});
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
