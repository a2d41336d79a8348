// Letters with shadow, edges and relief.

#include "platform/drawing/PagePainter.h"
#include "platform/layout/PdfContent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

namespace qvnd::drawing {
namespace {

using Relief = word::LetterEffects::Relief;

// One large letter on a page of 500 by 500 twips, painted a pixel a twip.
class Letters : public testing::Test {
protected:
    Letters() {
        page.width = 500;
        page.height = 500;
        layout::PlacedText letter;
        letter.x = 100;
        letter.baseline = 400;
        letter.size = 400;
        letter.face = fonts.face({u"sans-serif", true, false, false});
        letter.text = u"I";
        letter.advances = {200};
        page.layer.texts = {letter};
    }
    layout::PlacedText& letter() { return page.layer.texts[0]; }

    // The pixels of one colour: how many, and their mean place.
    struct Area {
        int pixels = 0;
        double x = 0;
        double y = 0;
    };
    Area areaOf(std::uint32_t colour) {
        const PixelImage image = PagePainter(fonts, nullptr).image(page, 500);
        Area area;
        for (int i = 0; i < image.width * image.height; ++i) {
            const auto* pixel = image.pixels.data() + std::size_t{4} * i;
            if (((pixel[2] << 16U) | (pixel[1] << 8U) | pixel[0]) == static_cast<int>(colour)) {
                ++area.pixels;
                const int row = i / image.width;
                area.x += i - row * image.width;
                area.y += row;
            }
        }
        area.x /= std::max(1, area.pixels);
        area.y /= std::max(1, area.pixels);
        return area;
    }

    std::string pageContent() { return test::firstPageContent(test::pdfOf(page, fonts)); }
    static int countOf(const std::string& text, const std::string& part) {
        int count = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
            ++count;
        }
        return count;
    }

    FontFaces fonts{FontChoice::here};
    layout::Page page;
};

TEST_F(Letters, AShadowLiesToTheLowerRightAndIsLight) {
    EXPECT_EQ(areaOf(0xC0C0C0).pixels, 0);
    letter().effects.shadowed = true;
    const Area own = areaOf(0x000000);
    const Area shadow = areaOf(0xC0C0C0);
    ASSERT_GT(shadow.pixels, 500);
    EXPECT_GT(shadow.x, own.x + 10);
    EXPECT_GT(shadow.y, own.y + 5);
}

TEST_F(Letters, AShadowOfLightLettersIsDark) {
    page.layer.fills.push_back({0, 0, 500, 500, 0x0000FF});
    letter().colour = 0xFFFF00;
    letter().effects.shadowed = true;
    EXPECT_GT(areaOf(0x404040).pixels, 500);
    EXPECT_EQ(areaOf(0xC0C0C0).pixels, 0);
}

TEST_F(Letters, OutlinedOnesAreEmptyWithinTheirEdge) {
    page.layer.fills.push_back({0, 0, 500, 500, 0x0000FF});
    letter().colour = 0xFF0000;
    const Area filled = areaOf(0xFF0000);
    letter().effects.outlined = true;
    const Area inside = areaOf(0xFFFFFF);
    const Area edge = areaOf(0xFF0000);
    EXPECT_GT(inside.pixels, filled.pixels / 2);
    EXPECT_LT(inside.pixels, filled.pixels);
    EXPECT_GT(edge.pixels, 500);
    EXPECT_LT(edge.pixels, filled.pixels / 2);
    EXPECT_NEAR(edge.x, inside.x, 2);
    EXPECT_NEAR(edge.y, inside.y, 2);
}

TEST_F(Letters, RaisedOnesAreDarkBelowAndSunkenOnesAbove) {
    letter().colour = 0xFF0000;
    letter().effects.relief = Relief::raised;
    const Area own = areaOf(0xFF0000);
    const Area below = areaOf(0x808080);
    ASSERT_GT(below.pixels, 500);
    EXPECT_GT(below.x, own.x + 10);
    EXPECT_GT(below.y, own.y + 5);
    letter().effects.relief = Relief::sunken;
    const Area above = areaOf(0x808080);
    ASSERT_GT(above.pixels, 500);
    EXPECT_LT(above.x, own.x - 10);
    EXPECT_LT(above.y, own.y - 5);
}

TEST_F(Letters, BlackOnesInReliefAreAsWhiteAsPaper) {
    letter().effects.relief = Relief::raised;
    EXPECT_EQ(areaOf(0x000000).pixels, 0);
    EXPECT_GT(areaOf(0x808080).pixels, 500);
}

TEST_F(Letters, AnUnderlineKeepsTheColourOfTheText) {
    letter().effects.relief = Relief::raised;
    letter().underline.kind = word::Underline::Kind::plain;
    const Area line = areaOf(0x000000);
    EXPECT_GT(line.pixels, 1000);
    EXPECT_GT(line.y, 420) << "below the letter";
}

TEST_F(Letters, AReaderOfThePdfFindsThemOnceWhateverTheirEffects) {
    const auto fillsIn = [](const std::string& content) {
        return countOf(content, " f\n") + countOf(content, " f ");
    };
    const std::string plain = pageContent();
    ASSERT_EQ(countOf(plain, "Tj"), 1);
    letter().effects = {true, true, Relief::raised};
    const std::string content = pageContent();
    EXPECT_EQ(countOf(content, "Tj"), 1);
    EXPECT_EQ(fillsIn(content), fillsIn(plain) + 2) << "its shadow and its relief\n" << content;
}

// The red underline of a wide letter.
class Underlines : public Letters {
protected:
    using Kind = word::Underline::Kind;
    Underlines() {
        letter().text = u"I I";
        letter().advances = {130, 80, 130};
    }
    static constexpr std::uint32_t red = 0xFF0000;

    void paint(const word::Underline& line) {
        letter().underline = line;
        letter().underline.colour = red;
        image = PagePainter(fonts, nullptr).image(page, 500);
    }
    bool isRed(int x, int y) const {
        const auto* pixel = image.pixels.data() + std::size_t{4} * (y * image.width + x);
        return pixel[2] > pixel[1] + 60;
    }
    // How many stretches of red any row or column has at most.
    int mostStretches(bool across) const {
        int most = 0;
        for (int a = 0; a < 500; ++a) {
            int count = 0;
            bool before = false;
            for (int b = 0; b < 500; ++b) {
                const bool here = across ? isRed(b, a) : isRed(a, b);
                count += here && !before ? 1 : 0;
                before = here;
            }
            most = std::max(most, count);
        }
        return most;
    }
    int rows() const {
        int count = 0;
        for (int y = 0; y < 500; ++y) {
            bool any = false;
            for (int x = 0; x < 500; ++x) {
                any = any || isRed(x, y);
            }
            count += any ? 1 : 0;
        }
        return count;
    }

    PixelImage image;
};

TEST_F(Underlines, HaveAColourOfTheirOwn) {
    paint({Kind::plain});
    EXPECT_EQ(mostStretches(true), 1);
    EXPECT_EQ(mostStretches(false), 1);
    const int thin = rows();
    EXPECT_GT(thin, 10);
    paint({Kind::plain, true});
    EXPECT_GT(rows(), thin * 3 / 2) << "a thick one";
}

TEST_F(Underlines, OfWordsLeaveBlanksOut) {
    paint({Kind::plain, false, true});
    EXPECT_EQ(mostStretches(true), 2);
}

TEST_F(Underlines, OfTwoLinesHaveARoomBetweenThem) {
    paint({Kind::twofold});
    EXPECT_EQ(mostStretches(false), 2);
    EXPECT_EQ(mostStretches(true), 1);
}

TEST_F(Underlines, AreBrokenAsTheirKindSays) {
    paint({Kind::dotted});
    const int dots = mostStretches(true);
    paint({Kind::dashed});
    const int dashes = mostStretches(true);
    paint({Kind::longDashed});
    const int longDashes = mostStretches(true);
    EXPECT_GT(dots, dashes);
    EXPECT_GT(dashes, longDashes);
    EXPECT_GT(longDashes, 1);
    paint({Kind::dotDash});
    EXPECT_GT(mostStretches(true), longDashes);
    paint({Kind::dotDotDash});
    EXPECT_GT(mostStretches(true), dashes);
}

TEST_F(Underlines, MayGoUpAndDown) {
    paint({Kind::plain});
    const int straight = rows();
    paint({Kind::wavy});
    EXPECT_GT(rows(), straight);
    EXPECT_GT(mostStretches(true), 3);
    EXPECT_EQ(mostStretches(false), 1);
    paint({Kind::twofoldWavy});
    EXPECT_EQ(mostStretches(false), 2);
}

} // namespace
} // namespace qvnd::drawing
