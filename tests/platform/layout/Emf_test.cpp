#include "MetafileBytes.h"
#include "platform/drawing/metafile/Metafile.h"

#include <gtest/gtest.h>

#include <bit>
#include <numbers>
#include <tuple>

namespace qvnd::drawing {
namespace {

using Step = VectorPath::Step;

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

void stretch(EmfBuilder& emf, std::uint32_t operation) {
    emf.stretchDib(operation, 100, 200, 50, 60, 2, 1, redAndBlue());
}

TEST(Emf, ABitmapIsStretchedToItsPlace) {
    EmfBuilder emf;
    stretch(emf, 0x00CC0020);
    const VectorImage image = drawn(emf).image(0);
    EXPECT_EQ(image.corner, (VectorPoint{100, 200}));
    EXPECT_EQ(image.across, (VectorPoint{50, 0}));
    EXPECT_EQ(image.down, (VectorPoint{0, 60}));
    EXPECT_EQ(image.image.pixels, redAndBluePixels);
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

TEST(Emf, AHatchHasItsLinesAndTheBackgroundBetweenThem) {
    EmfBuilder emf;
    emf.record(25, {0x00FF00}).record(39, {2, 2, 0x0000FF, 5}).record(37, {2});
    emf.record(43, {0, 0, 50, 50}).record(18, {1}).record(43, {0, 0, 50, 50});
    const Drawn result = drawn(emf);
    const VectorShape opaque = result.shape(0);
    EXPECT_EQ(opaque.fill, 0x00FF00U);
    ASSERT_TRUE(opaque.hatch);
    EXPECT_TRUE(opaque.hatch->falling && opaque.hatch->rising);
    EXPECT_FALSE(opaque.hatch->level || opaque.hatch->upright);
    EXPECT_EQ(opaque.hatch->colour, 0xFF0000U);
    EXPECT_FALSE(result.shape(1).fill) << "a transparent background";
    EXPECT_TRUE(result.shape(1).hatch);
}

TEST(Emf, ABrushOfAPatternHasItsPixels) {
    word::LittleEndianWriter content;
    for (const unsigned part : {2U, 0U, 32U, 40U, 72U, 8U}) {
        content.u32(part);
    }
    content.bytes(redAndBlue());
    EmfBuilder emf;
    emf.record(94, content.data()).record(37, {2}).record(43, {0, 0, 50, 50});
    emf.record(94, {3, 0, 0, 0, 0, 0}).record(37, {3}).record(43, {0, 0, 50, 50});
    const Drawn result = drawn(emf);
    ASSERT_TRUE(result.shape(0).tile);
    EXPECT_EQ(result.shape(0).tile->pixels, redAndBluePixels);
    EXPECT_FALSE(result.shape(1).tile);
    EXPECT_EQ(result.shape(1).fill, 0xC0C0C0U) << "a pattern that cannot be read is grey";
}

TEST(Emf, ARasterOperationOfPensDrawsBlackWhiteNothingOrMixes) {
    const auto drawnWith = [](int operation) {
        EmfBuilder emf;
        emf.record(38, {1, 0, 4, 0, 0x0000FF}).record(37, {1}).record(20, {operation});
        emf.record(43, {0, 0, 50, 50});
        return drawn(emf);
    };
    EXPECT_EQ(drawnWith(1).shape(0).fill, 0x000000U);
    EXPECT_EQ(drawnWith(1).shape(0).pen->colour, 0x000000U);
    EXPECT_EQ(drawnWith(16).shape(0).pen->colour, 0xFFFFFFU);
    EXPECT_EQ(drawnWith(11).count(), 0U);
    EXPECT_EQ(drawnWith(9).shape(0).blend, VectorBlend::darken);
    EXPECT_EQ(drawnWith(15).shape(0).blend, VectorBlend::lighten);
    EXPECT_EQ(drawnWith(13).shape(0).blend, VectorBlend::cover);
    EXPECT_EQ(drawnWith(13).shape(0).pen->colour, 0xFF0000U);
}

TEST(Emf, ARegionMayBeTakenOutOfTheClipOrTakeItsPlace) {
    const auto clipOf = [](int mode) {
        EmfBuilder emf;
        emf.record(30, {0, 0, 90, 90});
        emf.record(75, {48, mode, 32, 1, 1, 16, 0, 0, 9, 9, 10, 10, 60, 60});
        emf.record(43, {0, 0, 100, 100});
        return drawn(emf).picture->elements.at(0).clip;
    };
    for (const auto& [mode, isOutside, isWithin] :
         {std::tuple{1, false, true}, std::tuple{4, true, true}, std::tuple{5, false, false}}) {
        const auto clip = clipOf(mode);
        ASSERT_TRUE(clip) << mode;
        EXPECT_EQ(clip->path.points[2], (VectorPoint{60, 60})) << mode;
        EXPECT_EQ(clip->isOutside, isOutside) << mode;
        EXPECT_EQ(clip->around != nullptr, isWithin) << mode;
    }
}

TEST(Emf, ARectangleMayBeTakenOutOfTheClip) {
    EmfBuilder emf;
    emf.record(29, {10, 10, 20, 20}).record(43, {0, 0, 100, 100});
    const auto clip = drawn(emf).picture->elements.at(0).clip;
    ASSERT_TRUE(clip);
    EXPECT_TRUE(clip->isOutside);
    EXPECT_EQ(clip->path.points[2], (VectorPoint{20, 20}));
}

TEST(Emf, RegionsAreFilledByTheirBrushOrTheSelectedOne) {
    EmfBuilder emf;
    emf.record(39, {2, 0, 0x0000FF, 0}).record(39, {3, 0, 0x00FF00, 0}).record(37, {2});
    emf.record(71, {0, 0, 9, 9, 48, 3, 32, 1, 1, 16, 0, 0, 9, 9, 10, 10, 60, 60});
    emf.record(74, {0, 0, 9, 9, 48, 32, 1, 1, 16, 0, 0, 9, 9, 10, 10, 60, 60});
    const Drawn result = drawn(emf);
    EXPECT_EQ(result.shape(0).fill, 0x00FF00U);
    EXPECT_FALSE(result.shape(0).pen);
    EXPECT_EQ(result.shape(0).path.points[2], (VectorPoint{60, 60}));
    EXPECT_EQ(result.shape(1).fill, 0xFF0000U);
}

TEST(Emf, APixelIsOneUnitOfTheDevice) {
    EmfBuilder emf;
    emf.record(17, {8}).record(9, {100, 100}).record(11, {1000, 1000});
    emf.record(15, {5, 6, 0x0000FF});
    const VectorShape pixel = drawn(emf).shape(0);
    EXPECT_EQ(pixel.fill, 0xFF0000U);
    EXPECT_EQ(pixel.path.points[0], (VectorPoint{50, 60}));
    EXPECT_EQ(pixel.path.points[2], (VectorPoint{51, 61}));
    ASSERT_TRUE(pixel.pen);
    EXPECT_EQ(pixel.pen->width, 0) << "never finer than a line that is seen";
}

TEST(Emf, AnArcByItsAnglesGoesOnFromTheCurrentPlace) {
    const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    EmfBuilder emf;
    emf.record(27, {0, 0}).record(41, {100, 100, 50, bits(0), bits(90)}).record(54, {0, 0});
    const Drawn result = drawn(emf);
    const VectorPath path = result.shape(0).path;
    EXPECT_EQ(path.steps, (std::vector{Step::move, Step::line, Step::curve}));
    EXPECT_EQ(path.points[0], (VectorPoint{0, 0}));
    EXPECT_EQ(path.points[1], (VectorPoint{150, 100})); // at its right
    EXPECT_NEAR(path.points.back().x, 100, 0.01);       // and up to its top
    EXPECT_NEAR(path.points.back().y, 50, 0.01);
    EXPECT_NEAR(result.shape(1).path.points[0].y, 50, 0.01);
}

TEST(Emf, PointsOfKindsMoveDrawCurvesAndClose) {
    EmfBuilder emf;
    emf.record(56, {0, 0, 99, 99, 5, 10, 10, 50, 10, 60, 20, 70, 30, 80, 80, 0x04040206, 5});
    const VectorPath path = drawn(emf).shape(0).path;
    EXPECT_EQ(path.steps,
              (std::vector{Step::move, Step::move, Step::line, Step::curve, Step::close}));
    EXPECT_EQ(path.points[1], (VectorPoint{10, 10}));
    EXPECT_EQ(path.points.back(), (VectorPoint{80, 80}));
}

TEST(Emf, AWindowIsScaledByFractions) {
    EmfBuilder emf;
    emf.record(17, {8}).record(9, {100, 100}).record(11, {100, 100}).record(32, {1, 2, 1, 4});
    emf.record(27, {0, 0}).record(54, {10, 10}).record(31, {3, 1, 3, 1}).record(32, {1, 0, 1, 1});
    emf.record(27, {0, 0}).record(54, {10, 10});
    const Drawn result = drawn(emf);
    EXPECT_EQ(result.shape(0).path.points[1], (VectorPoint{20, 40}));
    EXPECT_EQ(result.shape(1).path.points[1], (VectorPoint{60, 120})) << "by nothing: not at all";
}

TEST(Emf, TextCoversWhatLiesUnderItWhereTheBackgroundIsOpaque) {
    EmfBuilder emf;
    emf.font(u"Arial", -20).record(25, {0x00FF00}).text(0, 0, u"a", {}).record(18, {1});
    emf.text(0, 0, u"b", {});
    const Drawn result = drawn(emf);
    EXPECT_EQ(result.text(0).background, 0x00FF00U);
    EXPECT_FALSE(result.text(1).background);
}

TEST(Emf, AFaceThatIsTurnedForVerticalTextIsTheFace) {
    EmfBuilder emf;
    emf.font(u"@宋体", -20).text(0, 0, u"工", {});
    EXPECT_EQ(drawn(emf).text(0).font, u"宋体");
}

TEST(Emf, ARasterOperationTurnsTheColoursOfABitmapAround) {
    EmfBuilder emf;
    stretch(emf, 0x00330008);
    EXPECT_EQ(drawn(emf).image(0).image.pixels,
              (std::vector<std::uint8_t>{255, 255, 0, 255, 0, 255, 255, 255}));
}

TEST(Emf, ARasterOperationWithoutASourceFillsThePlaceOfTheBitmap) {
    EmfBuilder emf;
    emf.record(39, {2, 0, 0x0000FF, 0}).record(37, {2});
    for (const std::uint32_t operation :
         {0x00F00021U, 0x005A0049U, 0x00550009U, 0x00AA0029U, 0x00000042U}) {
        stretch(emf, operation);
    }
    const Drawn result = drawn(emf);
    ASSERT_EQ(result.count(), 4U) << "the one that leaves all as it is draws nothing";
    EXPECT_EQ(result.shape(0).fill, 0xFF0000U);
    EXPECT_EQ(result.shape(0).path.points[2], (VectorPoint{150, 260}));
    EXPECT_EQ(result.shape(1).blend, VectorBlend::invert);
    EXPECT_EQ(result.shape(1).fill, 0xFF0000U);
    EXPECT_EQ(result.shape(2).blend, VectorBlend::invert);
    EXPECT_EQ(result.shape(2).fill, 0xFFFFFFU);
    EXPECT_EQ(result.shape(3).fill, 0x000000U);
}

TEST(Emf, ABitmapMayBeBlendedByOneOpacity) {
    word::LittleEndianWriter content;
    content.zeros(16);
    for (const unsigned part : {0U, 0U, 50U, 60U, 0x00330000U, 0U, 0U}) {
        content.u32(part);
    }
    content.zeros(32);
    for (const unsigned part : {108U, 40U, 148U, 8U, 2U, 1U}) {
        content.u32(part);
    }
    content.bytes(redAndBlue());
    EmfBuilder emf;
    emf.record(114, content.data());
    const VectorImage image = drawn(emf).image(0);
    EXPECT_NEAR(image.opacity, 0.2, 0.001);
    EXPECT_EQ(image.image.pixels, redAndBluePixels);
}

TEST(Emf, ABitmapWhosePartLiesBeyondTheRangeOfNumbersIsLeftOut) {
    constexpr std::uint32_t least = 0x80000000; // as a number with a sign
    EmfBuilder emf;
    emf.record(81, [](word::LittleEndianWriter& out) {
        out.zeros(16);
        for (const std::uint32_t number :
             {0U, 0U, 0U, least, 2U, least, 80U, 40U, 120U, 8U, 0U, 0x00CC0020U, 50U, 60U}) {
            out.u32(number);
        }
        out.bytes(redAndBlue());
    });
    emf.record(43, {0, 0, 10, 10});
    EXPECT_EQ(drawn(emf).count(), 1U);
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

} // namespace
} // namespace qvnd::drawing
