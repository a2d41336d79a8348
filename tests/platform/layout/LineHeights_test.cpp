#include "platform/word/layout/LineHeights.h"
#include "support/FixedFonts.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

using Spacing = word::ResolvedParagraph::Spacing;

// Lines whose content needs 200 twips, 160 of them above the foot.
class LineHeights : public testing::Test {
protected:
    LineHeights() { setting.options = officeOptions(); }

    void space(Spacing spacing, int line) {
        format.spacing = spacing;
        format.line = line;
    }
    LineRoom room(LineOrder order = {}) { return roomOf({160, 40}, format, setting, order); }

    word::ResolvedParagraph format;
    word::ResolvedText text;
    LineSetting setting;
};

TEST_F(LineHeights, TheOfficeSuiteAddsWhatAMultipleAsksForBelowTheLine) {
    space(Spacing::multiple, 360);
    EXPECT_DOUBLE_EQ(room().height, 300);
    EXPECT_DOUBLE_EQ(room().foot, 160);
    EXPECT_DOUBLE_EQ(room().spare, 100);
    setting.options = {};
    EXPECT_DOUBLE_EQ(room().height, 300);
    EXPECT_DOUBLE_EQ(room().foot, 260);
    EXPECT_DOUBLE_EQ(room().spare, 0);
}

TEST_F(LineHeights, TheOfficeSuiteTakesFromAboveTheLineWhatAMultipleIsShort) {
    space(Spacing::multiple, 192);
    EXPECT_DOUBLE_EQ(room().height, 160);
    EXPECT_DOUBLE_EQ(room().foot, 120);
    EXPECT_DOUBLE_EQ(room({true, false}).foot, 128);
    EXPECT_DOUBLE_EQ(room().spare, 0);
}

TEST_F(LineHeights, ALeastHeightStandsAboveTheLine) {
    space(Spacing::atLeast, 300);
    EXPECT_DOUBLE_EQ(room().height, 300);
    EXPECT_DOUBLE_EQ(room().foot, 260);
    space(Spacing::atLeast, 100);
    EXPECT_DOUBLE_EQ(room().height, 200);
}

TEST_F(LineHeights, AnExactHeightHasFourFifthsAboveItsFoot) {
    space(Spacing::exact, 300);
    for (const bool office : {false, true}) {
        setting.options.officeLines = office;
        EXPECT_DOUBLE_EQ(room().height, 300);
        EXPECT_DOUBLE_EQ(room().foot, 240);
    }
}

TEST_F(LineHeights, OnAGridTheOfficeSuiteHeedsNeitherExactNorLeastHeights) {
    setting.grid.linePitch = 150;
    for (const Spacing spacing : {Spacing::exact, Spacing::atLeast}) {
        space(spacing, 700);
        EXPECT_DOUBLE_EQ(room().height, 300);
        EXPECT_DOUBLE_EQ(room().foot, 210);
    }
}

TEST_F(LineHeights, OnAGridTheOfficeSuiteMultipliesUnitsAndOfTheLastLineItsContent) {
    setting.grid.linePitch = 250;
    space(Spacing::multiple, 480);
    EXPECT_DOUBLE_EQ(room().height, 500);
    EXPECT_DOUBLE_EQ(room().spare, 250);
    EXPECT_DOUBLE_EQ(room().foot, 185);
    EXPECT_DOUBLE_EQ(room({false, true}).height, 450);
    EXPECT_DOUBLE_EQ(room({false, true}).spare, 200);
    space(Spacing::multiple, 120);
    EXPECT_DOUBLE_EQ(room().height, 250);
}

TEST_F(LineHeights, TheOfficeSuiteTakesOverWholePercentsOfAMultiple) {
    setting.options.officeLines = true;
    space(Spacing::multiple, 416); // 173.3 %
    EXPECT_DOUBLE_EQ(room().height, 346);
    setting.options.officeLines = false;
    EXPECT_NEAR(room().height, 346.67, 0.01);
}

TEST_F(LineHeights, TheOfficeSuiteCutsWhatAMultipleGivesToWholeTwips) {
    space(Spacing::multiple, 312); // 263.9
    EXPECT_DOUBLE_EQ(roomOf({163, 40}, format, setting, {}).height, 263);
    EXPECT_DOUBLE_EQ(roomOf({163, 40}, format, setting, {}).spare, 60);
    space(Spacing::multiple, 216); // 182.7
    EXPECT_DOUBLE_EQ(roomOf({163, 40}, format, setting, {}).height, 182);
    setting.grid.linePitch = 251;
    space(Spacing::multiple, 312); // 326.3
    EXPECT_DOUBLE_EQ(roomOf({163, 40}, format, setting, {}).height, 326);
    setting.options = {};
    setting.grid = {};
    EXPECT_DOUBLE_EQ(roomOf({163, 40}, format, setting, {}).height, 203 * 1.3);
}

TEST_F(LineHeights, InTheOfficeSuiteAFacesDescentIsWhatItsHeightLeaves) {
    const ContentHeights squares = officeHeights({1.16, 0.288}, 240, false);
    EXPECT_DOUBLE_EQ(squares.ascent, 278); // of 278.4
    EXPECT_DOUBLE_EQ(squares.descent, 70); // of 69.12, for the height is 347.5
    const ContentHeights latin = officeHeights({0.683, 0.317}, 210, false);
    EXPECT_DOUBLE_EQ(latin.ascent, 144); // of 143.43, which is 861 sixths
    EXPECT_DOUBLE_EQ(latin.descent, 66); // of 66.57
}

TEST_F(LineHeights, TheOfficeSuiteRaisesAndLowersTextByWholeTwips) {
    const FaceHeights face{0.683, 0.317, 0.2};
    const ScriptText raised = officeScript(face, 220, true, true);
    EXPECT_DOUBLE_EQ(raised.size, 0.58 * 220);
    EXPECT_DOUBLE_EQ(raised.raised, 150 + 44 - (87 + 26));
    EXPECT_DOUBLE_EQ(officeScript(face, 220, true, false).raised, 150 - 87);
    EXPECT_DOUBLE_EQ(officeScript(face, 220, false, true).raised, 41 - 70);
}

TEST_F(LineHeights, AParagraphOffTheGridIsSetAsWithoutOne) {
    setting.grid.linePitch = 250;
    format.snapsToGrid = false;
    EXPECT_DOUBLE_EQ(room().height, 200);
}

// A face of the usual Latin proportions.
class LatinFonts : public test::FixedFonts {
public:
    FaceHeights heights(FaceId) override { return {0.891, 0.216, 0.0425}; }
};

TEST_F(LineHeights, AMultipleCountsTheTextOfALineAndNotItsPictures) {
    test::FixedFonts fonts;
    ParagraphItems paragraph;
    paragraph.markSize = 200;
    std::vector<TextItem> items(1);
    items[0].kind = TextItem::Kind::picture;
    items[0].height = 2000;
    space(Spacing::multiple, 360);
    for (const bool office : {false, true}) {
        setting.options.officeLines = office;
        const ContentHeights alone = contentOf(items, paragraph, false, fonts, setting);
        EXPECT_DOUBLE_EQ(alone.sum(), 2000);
        EXPECT_DOUBLE_EQ(roomOf(alone, format, setting, {}).height, 2100);
        TextItem letter;
        letter.character = u'一';
        letter.size = 400;
        letter.format = &text;
        items.push_back(letter);
        const ContentHeights both = contentOf(items, paragraph, false, fonts, setting);
        EXPECT_DOUBLE_EQ(both.sum(), 2080);
        EXPECT_DOUBLE_EQ(roomOf(both, format, setting, {}).height, 2280);
        items.pop_back();
    }
}

TEST_F(LineHeights, TheOfficeSuiteKnowsHeightsInWholeTwipsAlone) {
    LatinFonts fonts;
    ParagraphItems empty;
    empty.markSize = 220;
    const ContentHeights whole = contentOf({}, empty, true, fonts, setting);
    EXPECT_DOUBLE_EQ(whole.ascent, 196 + 9);
    EXPECT_DOUBLE_EQ(whole.descent, 48);
    empty.markSize = 239.6; // an ascent of 213.484, which is 1281 sixths and so 213.5
    EXPECT_DOUBLE_EQ(contentOf({}, empty, true, fonts, setting).ascent, 214 + 10);
    empty.markSize = 220;
    setting.options = {};
    EXPECT_NEAR(contentOf({}, empty, true, fonts, setting).ascent, 196.02 + 9.35, 0.001);
}

TEST_F(LineHeights, InTheOfficeSuiteBlanksCountButWhereALineIsBrokenBehindThem) {
    test::FixedFonts fonts;
    ParagraphItems paragraph;
    paragraph.markSize = 100;
    word::ResolvedText look;
    std::vector<TextItem> items(3);
    for (TextItem& item : items) {
        item.character = U'a';
        item.size = 200;
        item.format = &look;
    }
    items[2].character = U' ';
    items[2].size = 300;
    const auto height = [&](bool isLast) {
        return contentOf(items, paragraph, isLast, fonts, setting).sum();
    };
    EXPECT_EQ(height(false), 200);
    EXPECT_EQ(height(true), 300);
    std::swap(items[1], items[2]);
    EXPECT_EQ(height(false), 300);
    items[2].kind = TextItem::Kind::lineBreak;
    EXPECT_EQ(height(false), 300);
    setting.options = {};
    EXPECT_EQ(height(true), 200);
}

} // namespace
} // namespace qvnd::layout
