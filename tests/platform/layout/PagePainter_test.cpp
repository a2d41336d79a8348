#include "platform/drawing/PagePainter.h"

#include "platform/drawing/CharacterTable.h"
#include "platform/drawing/FontRoom.h"
#include "platform/drawing/KnownFaces.h"
#include "platform/drawing/PublishedWidths.h"
#include "platform/error/RunTimeError.h"
#include "platform/layout/PdfContent.h"
#include "platform/word/layout/ShapeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <string>

namespace qvnd::drawing {
namespace {

using layout::Page;
using layout::PlacedText;

// A page of 1000 by 500 twips: 100 by 50 pixels below.
class Painting : public testing::Test {
protected:
    Painting() {
        page.width = 1000;
        page.height = 500;
    }

    PixelImage paint() { return PagePainter(fonts, nullptr).image(page, 100); }

    static std::uint32_t at(const PixelImage& image, int x, int y) {
        const auto* pixel = image.pixels.data() + (static_cast<std::size_t>(y) * 100 + x) * 4U;
        return (std::uint32_t{pixel[2]} << 16) | (std::uint32_t{pixel[1]} << 8) | pixel[0];
    }

    // The mean place of all ink, in pixels from the left.
    static double middleOf(const PixelImage& image) {
        double ink = 0;
        double moment = 0;
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                const double dark = 255 - static_cast<double>(at(image, x, y) & 0xFF);
                ink += dark;
                moment += dark * (x + 0.5);
            }
        }
        return ink > 0 ? moment / ink : 0;
    }

    void type(const std::u16string& text, double size = 200) {
        PlacedText run;
        run.x = 100;
        run.baseline = 300;
        run.size = size;
        run.face = fonts.face({u"serif", false, false, false});
        run.text = text;
        run.advances.assign(text.size(), static_cast<float>(size));
        page.layer.texts.push_back(run);
    }
    // One character at the left edge, to which the named 宋体 gives half a square of 400 units.
    const PlacedText& typeHalfSquare(FontFaces& named, char16_t character) {
        PlacedText run;
        run.x = 0;
        run.baseline = 400;
        run.size = 400;
        run.face = named.shownBy(named.face({u"宋体", false, false, false}), character);
        run.text = std::u16string(1, character);
        run.advances = {200};
        page.layer.texts.push_back(run);
        return page.layer.texts.back();
    }

    std::string pdf(int pages) {
        std::string bytes;
        PagePainter painter(fonts, nullptr);
        const auto file = painter.pdf([&](word::ByteView part) {
            bytes.append(reinterpret_cast<const char*>(part.data()), part.size());
        });
        for (int i = 0; i < pages; ++i) {
            file->add(page);
        }
        file->finish();
        return bytes;
    }

    FontFaces fonts{FontChoice::here};
    Page page;
};

TEST_F(Painting, TextEndsWhereItIsCutOff) {
    type(u"HHH");
    const auto inkIn = [&](int from, int to) {
        const PixelImage image = paint();
        int ink = 0;
        for (int y = from; y < to; ++y) {
            for (int x = 0; x < image.width; ++x) {
                ink += at(image, x, y) != 0xFFFFFF ? 1 : 0;
            }
        }
        return ink;
    };
    EXPECT_GT(inkIn(25, 30), 0);
    page.layer.cutBelow(250, 200, 1000); // the text begins left of it
    EXPECT_GT(inkIn(25, 30), 0);
    page.layer.cutBelow(250, 0, 200);
    EXPECT_GT(inkIn(15, 24), 0);
    EXPECT_EQ(inkIn(25, 50), 0);
    page.layer.cutBelow(100, 0, 200);
    EXPECT_TRUE(page.layer.texts.empty());
}

TEST_F(Painting, TurnedTextRunsDownwardsFromItsBeginning) {
    type(u"IIII");
    page.layer.texts[0].baseline = 20;
    page.layer.texts[0].x = 500;
    page.layer.texts[0].advances.assign(4, 110);
    page.layer.texts[0].quarterTurns = 1;
    page.layer.texts[0].underline.kind = word::Underline::Kind::plain;
    const PixelImage image = paint();
    const auto inkWithin = [&](int left, int right) {
        int rows = 0;
        for (int y = 0; y < image.height; ++y) {
            bool hasInk = false;
            for (int x = left; x < right; ++x) {
                hasInk = hasInk || (at(image, x, y) & 0xFF) < 128;
            }
            rows += hasInk ? 1 : 0;
        }
        return rows;
    };
    EXPECT_GT(inkWithin(50, 66), 4) << "the letters stand at the right of their foot";
    EXPECT_GT(inkWithin(44, 49), 40) << "the line under them at its left, along all of them";
    EXPECT_EQ(inkWithin(0, 44), 0);
    EXPECT_EQ(inkWithin(66, 100), 0);
}

TEST_F(Painting, APageIsWhiteWhereNothingStands) {
    const PixelImage image = paint();
    EXPECT_EQ(image.width, 100);
    EXPECT_EQ(image.height, 50);
    EXPECT_EQ(at(image, 50, 25), 0xFFFFFFU);
}

TEST_F(Painting, FillsAndRulesStandAtTheirPlacesInTheirColours) {
    page.layer.fills.push_back({100, 100, 300, 100, 0x3366CC});
    page.layer.rules.push_back({0, 400, 1000, 400, 40, 0xFF0000});
    const PixelImage image = paint();
    EXPECT_EQ(at(image, 20, 15), 0x3366CCU);
    EXPECT_EQ(at(image, 45, 15), 0xFFFFFFU);
    EXPECT_EQ(at(image, 50, 40), 0xFF0000U);
}

TEST_F(Painting, WhatIsOnAHigherPlaneCoversWhatIsOnALowerOneOfWhateverKind) {
    page.layer.rules.push_back({0, 200, 1000, 200, 100, 0xFF0000});
    page.layer.fills.push_back({300, 100, 200, 200, 0x0000FF, 1});
    page.layer.fills.push_back({600, 100, 200, 200, 0x00FF00, -1});
    const PixelImage image = paint();
    EXPECT_EQ(at(image, 10, 20), 0xFF0000U);
    EXPECT_EQ(at(image, 40, 20), 0x0000FFU) << "in front of the rule";
    EXPECT_EQ(at(image, 70, 20), 0xFF0000U) << "behind it";
    EXPECT_EQ(at(image, 70, 12), 0x00FF00U);
}

TEST_F(Painting, AnOutlineIsFilledAndStrokedInItsColours) {
    layout::Outline outline;
    outline.path = layout::shapeOutline(110, {200, 100, 600, 300}, {}); // a diamond
    outline.fill = 0x00FF00;
    outline.lineWidth = 40;
    outline.lineColour = 0xFF0000;
    page.layer.outlines.push_back(outline);
    const PixelImage image = paint();
    EXPECT_EQ(at(image, 40, 20), 0x00FF00U);
    EXPECT_EQ(at(image, 30, 15), 0xFF0000U);
    EXPECT_EQ(at(image, 22, 11), 0xFFFFFFU) << "outside of the diamond";
}

TEST_F(Painting, TextArtFillsItsAreaAndLetsThroughWhatLiesUnderIt) {
    type(u"H");
    layout::TextArt art;
    art.texts = {page.layer.texts.back()};
    art.texts.back().x = 0;
    art.texts.back().baseline = 150;
    art.texts.back().colour = 0x000000;
    art.ownWidth = 150;
    art.ownHeight = 150;
    art.x = 100;
    art.y = 100;
    art.width = 800;
    art.height = 300;
    art.opacity = 0.5;
    page.layer.texts.clear();
    page.layer.textArt.push_back(art);
    const PixelImage image = paint();
    int darkest = 255;
    int left = 100;
    int right = 0;
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 100; ++x) {
            const int grey = static_cast<int>(at(image, x, y) & 0xFF);
            darkest = std::min(darkest, grey);
            left = grey < 250 ? std::min(left, x) : left;
            right = grey < 250 ? std::max(right, x) : right;
        }
    }
    EXPECT_NEAR(darkest, 128, 3);
    EXPECT_LT(left, 20);
    EXPECT_GT(right, 70);
}

TEST_F(Painting, TextStandsOnItsLine) {
    type(u"HHH");
    const PixelImage image = paint();
    int above = 0;
    int below = 0;
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 100; ++x) {
            (y < 30 ? above : below) += at(image, x, y) != 0xFFFFFF ? 1 : 0;
        }
    }
    EXPECT_GT(above, 20);
    EXPECT_EQ(below, 0);
}

TEST_F(Painting, APictureFillsItsPlace) {
    page.layer.pictures.push_back({100, 100, 200, 200, nullptr});
    PagePainter painter(fonts, [](const word::DataBlob&) {
        return PixelImage{1, 1, {0x00, 0x00, 0xFF, 0xFF}}; // one red pixel
    });
    const PixelImage image = painter.image(page, 100);
    EXPECT_EQ(at(image, 20, 20), 0xFF0000U);
    EXPECT_EQ(at(image, 60, 40), 0xFFFFFFU);
}

// A picture of a red and a blue pixel, the red one at the left.
TEST_F(Painting, APictureIsFlippedAndTurnedAboutItsMiddle) {
    const auto paintTurned = [&](const layout::ShapeTurn& turn) {
        layout::PlacedPicture picture{200, 100, 200, 100, nullptr};
        picture.turn = turn;
        page.layer.pictures = {picture};
        PagePainter painter(fonts, [](const word::DataBlob&) {
            return PixelImage{2, 1, {0x00, 0x00, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0xFF}};
        });
        return painter.image(page, 100);
    };
    const PixelImage straight = paintTurned({});
    EXPECT_EQ(at(straight, 22, 15), 0xFF0000U);
    EXPECT_EQ(at(straight, 38, 15), 0x0000FFU);
    const PixelImage flipped = paintTurned({true, false, 0});
    EXPECT_EQ(at(flipped, 22, 15), 0x0000FFU);
    EXPECT_EQ(at(flipped, 38, 15), 0xFF0000U);
    const PixelImage clockwise = paintTurned({false, false, std::numbers::pi / 2});
    EXPECT_EQ(at(clockwise, 30, 7), 0xFF0000U);
    EXPECT_EQ(at(clockwise, 30, 23), 0x0000FFU);
    EXPECT_EQ(at(clockwise, 22, 15), 0xFFFFFFU);
    const PixelImage both = paintTurned({true, false, std::numbers::pi / 2});
    EXPECT_EQ(at(both, 30, 7), 0x0000FFU) << "flipped before it is turned";
    const PixelImage upsideDown = paintTurned({false, true, std::numbers::pi / 2});
    EXPECT_EQ(at(upsideDown, 30, 7), 0xFF0000U);
}

TEST_F(Painting, APictureThatCannotBeReadLeavesItsPlaceEmpty) {
    page.layer.pictures.push_back({100, 100, 200, 200, nullptr});
    PagePainter painter(fonts, [](const word::DataBlob&) { return std::optional<PixelImage>(); });
    EXPECT_EQ(at(painter.image(page, 100), 20, 20), 0xFFFFFFU);
}

TEST_F(Painting, APdfHasItsPagesInTheirSize) {
    type(u"HHH");
    const std::string bytes = pdf(3);
    EXPECT_EQ(bytes.substr(0, 5), "%PDF-");
    EXPECT_NE(bytes.find("/Count 3"), std::string::npos);
    EXPECT_NE(bytes.find("/MediaBox [ 0 0 50 25 ]"), std::string::npos);
}

// What metafiles combine with the paper would be black without any.
TEST_F(Painting, APageOfAPdfIsWhiteBeforeAnythingIsPainted) {
    page.layer.fills.push_back({100, 100, 300, 100, 0xFF0000});
    const std::string content = test::firstPageContent(pdf(1));
    const auto paper = content.find("0 0 50 25 re f");
    ASSERT_NE(paper, std::string::npos) << content;
    EXPECT_LT(content.find("1 1 1 rg"), paper) << content;
    EXPECT_LT(paper, content.find("1 0 0 rg")) << content;
}

TEST_F(Painting, APictureOnEveryPageIsReadAndWrittenOnce) {
    const auto blob = std::make_shared<const word::Bytes>(word::Bytes{1});
    page.layer.pictures.push_back({0, 0, 1000, 1000, blob});
    int reads = 0;
    const auto sizeOf = [&](int pages) {
        PagePainter painter(fonts, [&](const word::DataBlob&) {
            ++reads;
            PixelImage noise{100, 100, {}};
            for (unsigned i = 0; i < 40000; ++i) {
                noise.pixels.push_back(static_cast<std::uint8_t>(i % 4 == 3 ? 0xFF : i * i >> 7U));
            }
            return std::optional(noise);
        });
        std::size_t size = 0;
        const auto pdf = painter.pdf([&](word::ByteView bytes) { size += bytes.size(); });
        for (int i = 0; i < pages; ++i) {
            pdf->add(page);
        }
        pdf->finish();
        return size;
    };
    const std::size_t one = sizeOf(1);
    EXPECT_EQ(reads, 1);
    const std::size_t many = sizeOf(20);
    EXPECT_EQ(reads, 2);
    EXPECT_LT(many, 2 * one);
}

TEST_F(Painting, APdfEmbedsOnlyTheGlyphsThatItUses) {
    type(u"H");
    const std::size_t one = pdf(1).size();
    std::u16string many;
    for (char16_t c = u'!'; c < u'~'; ++c) {
        many += c;
    }
    type(many);
    EXPECT_GT(pdf(1).size(), one + 1000);
    EXPECT_LT(one, 20000U);
}

TEST_F(Painting, AllFontsOfAPdfHaveTheRoomOfOneLine) {
    type(u"H");
    page.layer.texts.back().face = fonts.face({u"monospace", false, false, false});
    type(u"H");
    const std::string bytes = pdf(1);
    int found = 0;
    for (auto at = bytes.find("/Ascent "); at != std::string::npos;
         at = bytes.find("/Ascent ", at + 1)) {
        EXPECT_EQ(bytes.substr(at, 25), "/Ascent 950 /Descent -350");
        ++found;
    }
    EXPECT_EQ(found, 2);
}

// Cairo's own cutting down of such outlines leaves characters blank.
TEST_F(Painting, FacesOfCffOutlinesAreWrittenGlyphByGlyph) {
    const layout::FaceId face = fonts.face({u"Noto Sans CJK SC", false, false, true});
    if (fonts.shownBy(face, U'如') != face || fonts.glyph(face, U'如') == 0) {
        GTEST_SKIP() << "no face of that kind here";
    }
    type(u"如");
    page.layer.texts.back().face = face;
    const std::string bytes = pdf(1);
    EXPECT_EQ(bytes.find("NotoSansCJK"), std::string::npos) << "not as the font's own subset";
    EXPECT_LT(bytes.size(), 8000U);
}

TEST_F(Painting, AGlyphThatIsNarrowerThanItsCharactersRoomStandsInTheMiddle) {
    FontFaces named(FontChoice::named);
    const PlacedText& run = typeHalfSquare(named, u'|');
    ASSERT_DOUBLE_EQ(named.advance(run.face, U'|'), 0.5);
    ASSERT_LT(named.drawnAdvance(run.face, U'|'), 0.4);
    EXPECT_NEAR(middleOf(PagePainter(named, nullptr).image(page, 100)), 10, 0.8);
}

TEST_F(Painting, AGlyphThatIsWiderThanItsCharactersRoomIsNarrowed) {
    FontFaces named(FontChoice::named);
    const PlacedText& run = typeHalfSquare(named, u'W');
    ASSERT_GT(named.drawnAdvance(run.face, U'W'), 0.7);
    const PixelImage image = PagePainter(named, nullptr).image(page, 100);
    EXPECT_NEAR(middleOf(image), 10, 0.8);
    for (int y = 0; y < 50; ++y) {
        EXPECT_EQ(at(image, 22, y), 0xFFFFFFU) << y;
    }
}

TEST_F(Painting, AGlyphStandsBetweenTwoPixelsWhereTheLayoutPutsItThere) {
    type(u"I");
    const double middle = middleOf(paint());
    for (const double aside : {2.0, 4.0, 6.0, 8.0}) { // of the 10 units of a pixel
        page.layer.texts.back().x = 100 + aside;
        EXPECT_NEAR(middleOf(paint()) - middle, aside / 10, 0.05) << aside;
    }
}

TEST(FontRoom, EntriesAreFoundHoweverTheBytesComeAndNothingMoves) {
    const std::string file = "1 0 obj\n   /Ascent 1069\n   /Descent -293\n   /CapHeight 733\n" +
                             std::string(200, 'x') + "/Ascent 1 2 3";
    for (std::size_t step = 1; step < file.size(); ++step) {
        std::string written;
        FontRoom room([&](word::ByteView part) {
            written.append(reinterpret_cast<const char*>(part.data()), part.size());
        });
        for (std::size_t at = 0; at < file.size(); at += step) {
            const std::string part = file.substr(at, step);
            room.take({reinterpret_cast<const std::uint8_t*>(part.data()), part.size()});
        }
        room.finish();
        ASSERT_EQ(written.size(), file.size());
        EXPECT_EQ(written.substr(11, 25), "/Ascent 950 /Descent -350");
        EXPECT_EQ(written.find("/CapHeight"), file.find("/CapHeight"));
        EXPECT_EQ(written.substr(file.size() - 13), "/Ascent 1 2 3");
    }
}

TEST_F(Painting, AFailureToWriteComesBackToTheCaller) {
    PagePainter painter(fonts, nullptr);
    const auto file =
        painter.pdf([](word::ByteView) { throw RunTimeError(error::diskFull, u"磁盘已满。"); });
    EXPECT_THROW(
        {
            file->add(page);
            file->finish();
        },
        RunTimeError);
}

TEST_F(Painting, AnImageIsWrittenAsPng) {
    const word::Bytes png = pngOf(paint());
    ASSERT_GT(png.size(), 8U);
    EXPECT_EQ(std::string(png.begin() + 1, png.begin() + 4), "PNG");
}

TEST(KnownFaces, ALineOfAnEastAsianFaceIsThreeTenthsHigherThanTheFace) {
    for (const char16_t* name :
         {u"宋体", u"SimSun", u"仿宋_GB2312", u"KaiTi_GB2312", u"方正大标宋"}) {
        const auto face = knownFace(name);
        ASSERT_TRUE(face);
        EXPECT_NEAR(face->heights.ascent + face->heights.descent, 1.3, 0.001);
        EXPECT_TRUE(face->halfWidthLatin);
    }
    EXPECT_FALSE(knownFace(u"Nothing Known"));
}

TEST(CharacterTable, ACharacterHasTheUnknownValueUntilItsOwnIsSet) {
    CharacterTable<int> table(-1);
    EXPECT_EQ(table[U'施'], -1);
    table[U'施'] = 7;
    table[char32_t{0x20000}] = 8;
    EXPECT_EQ(table[U'施'], 7);
    EXPECT_EQ(table[char32_t{0x20000}], 8);
    EXPECT_EQ(table[char32_t{U'施' + 1}], -1);
    EXPECT_EQ(table[char32_t{0}], -1);
    EXPECT_EQ(table[char32_t{U'施' + 0x100}], -1) << "of another page";
}

TEST(FontFaces, AStandInOfTheOfficeSuiteLeavesALineItsHeight) {
    FontFaces fonts(FontChoice::here);
    const layout::FaceId face = fonts.face({u"DejaVu Sans", false, false, false});
    const layout::FaceId standIn = fonts.shownBy(face, U'施');
    ASSERT_NE(standIn, face) << "no font with Chinese characters is installed";
    EXPECT_DOUBLE_EQ(fonts.heights(standIn).ascent, fonts.heights(face).ascent);
    EXPECT_DOUBLE_EQ(fonts.heights(standIn).descent, fonts.heights(face).descent);
}

TEST(KnownFaces, MeasuresOfANamedFaceAreItsOwnWhateverStandsInForIt) {
    FontFaces fonts(FontChoice::named);
    const layout::FaceId face = fonts.face({u"仿宋_GB2312", false, false, true});
    EXPECT_DOUBLE_EQ(fonts.advance(fonts.shownBy(face, U'施'), U'施'), 1);
    const layout::FaceId latin = fonts.face({u"仿宋_GB2312", false, false, false});
    EXPECT_DOUBLE_EQ(fonts.advance(fonts.shownBy(latin, U'x'), U'x'), 0.5);
    const layout::FaceHeights times =
        fonts.heights(fonts.face({u"Times New Roman", true, false, false}));
    EXPECT_NEAR(times.ascent + times.descent + times.leading, 1.149, 0.001);
}

TEST(KnownFaces, GreekAndCyrillicLettersAndBoxLinesOfAChineseFaceAreSquares) {
    FontFaces fonts(FontChoice::named);
    const layout::FaceId face = fonts.face({u"宋体", false, false, false});
    for (const char32_t c : std::u32string_view(U"ΦφαωЖя─│①≮⊙⌒")) {
        EXPECT_DOUBLE_EQ(fonts.advance(face, c), 1) << std::hex << static_cast<unsigned>(c);
    }
    EXPECT_DOUBLE_EQ(fonts.advance(face, U'x'), 0.5);
}

TEST(PublishedWidths, LatinLettersOfTimesAndArialHaveTheirOwnWidthsOnEveryDesktop) {
    FontFaces fonts(FontChoice::named);
    const auto width = [&](const char16_t* name, bool bold, bool italic, char32_t c) {
        return fonts.advance(fonts.face({name, bold, italic, false}), c);
    };
    EXPECT_NEAR(width(u"Times New Roman", false, false, U'1'), 0.5, 1e-6);
    EXPECT_NEAR(width(u"Times New Roman", false, false, U'A'), 0.722, 1e-6);
    EXPECT_NEAR(width(u"TIMES NEW ROMAN", true, false, U'm'), 0.833, 1e-6);
    EXPECT_NEAR(width(u"Times New Roman", false, true, U'~'), 0.541, 1e-6);
    EXPECT_NEAR(width(u"Times New Roman", true, true, U' '), 0.25, 1e-6);
    EXPECT_NEAR(width(u"Arial", false, true, U'1'), 0.556, 1e-6);
    EXPECT_NEAR(width(u"Arial", true, false, U'W'), 0.944, 1e-6);
    EXPECT_EQ(publishedWidths(u"Calibri", false, false), nullptr);
}

} // namespace
} // namespace qvnd::drawing
