#include "platform/layout/ComposedLines.h"

#include <string>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

using word::LineAlignment;
using word::ResolvedParagraph;
using word::TabStop;

class LineComposer : public test::ComposedLines {};

using Lines = std::vector<std::u16string>;

TEST_F(LineComposer, ChineseTextEndsItsLinesAnywhere) {
    type(U"一二三四五六七八九十甲乙");
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九十", u"甲乙"}));
}

TEST_F(LineComposer, LatinWordsStayWholeAndTheBlankAtTheEndTakesNoRoom) {
    type(U"aaaa bbbb cccc dddd eeee"); // twenty letters a line
    EXPECT_EQ(lines(), (Lines{u"aaaa bbbb cccc dddd ", u"eeee"}));
}

TEST_F(LineComposer, AWordLongerThanTheLineIsCut) {
    type(std::u32string(25, U'a'));
    EXPECT_EQ(lines(), (Lines{std::u16string(20, u'a'), std::u16string(5, u'a')}));
}

TEST_F(LineComposer, ForbiddenCharactersBeginNoLineUnlessTheyHang) {
    type(U"一二三四五六七八九十）甲");
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九", u"十）甲"}));
}

TEST_F(LineComposer, AFullStopMayHangBeyondTheMargin) {
    type(U"一二三四五六七八九十。甲");
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九十。", u"甲"}));
    format.hangsPunctuation = false;
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九", u"十。甲"}));
}

TEST_F(LineComposer, AMarkDoesNotHangWhereTheNextLineMayNotBeginBehindIt) {
    type(U"一二三四五六七八九十。）甲");
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九", u"十。）甲"}));
}

TEST_F(LineComposer, OnlyCommasAndFullStopsHangButInTheOfficeSuiteMore) {
    type(U"一二三四五六七八九十；甲");
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九", u"十；甲"}));
    setting.options = officeOptions();
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九十；", u"甲"}));
}

TEST_F(LineComposer, AHangingMarkOfAJustifiedLineBeginsAtTheMargin) {
    type(U"一二三四五六七八abc。甲乙");
    format.alignment = LineAlignment::justified;
    ASSERT_EQ(lines(), (Lines{u"一二三四五六七八abc。", u"甲乙"}));
    EXPECT_NEAR(rightOf(0), 2200, 0.1);
}

TEST_F(LineComposer, OpeningMarksSideBySideLoseTheHalfBetweenThem) {
    type(U"一（《二");
    setting.compressesPunctuation = true;
    EXPECT_DOUBLE_EQ(rightOf(0), 700);
}

TEST_F(LineComposer, AClosingMarkAtTheEndOfALineGivesUpItsEmptyHalf) {
    setting.width = 1900;
    type(U"一二三四五六七八九）甲");
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八", u"九）甲"}));
    setting.compressesPunctuation = true;
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九）", u"甲"}));
    EXPECT_DOUBLE_EQ(rightOf(0), 1900);
}

TEST_F(LineComposer, AMarkThatGoesToTheNextLineKeepsItsWidth) {
    setting.width = 1900;
    setting.compressesPunctuation = true;
    type(U"一二三四五六七八九）!");
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八", u"九）!"}));
    EXPECT_DOUBLE_EQ(rightOf(1), 500);
}

TEST_F(LineComposer, BlanksBehindAHangingMarkStayOnItsLine) {
    type(U"一二三四五六七八九十。  甲");
    ASSERT_EQ(compose().size(), 2U);
    EXPECT_EQ(lines()[1], u"甲");
}

TEST_F(LineComposer, OpeningBracketsEndNoLine) {
    type(U"一二三四五六七八九（甲乙");
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九", u"（甲乙"}));
    format.forbidsLineEnds = false;
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七八九（", u"甲乙"}));
}

TEST_F(LineComposer, AGapStandsBetweenChineseAndLatinWhereItIsWanted) {
    type(U"一a一1");
    EXPECT_DOUBLE_EQ(rightOf(0), 600);
    format.spacesLatin = true;
    EXPECT_DOUBLE_EQ(rightOf(0), 700);
    format.spacesDigits = true;
    EXPECT_DOUBLE_EQ(rightOf(0), 750);
}

TEST_F(LineComposer, PunctuationSideBySideIsCompressedWhereTheDocumentSaysSo) {
    type(U"一）。（二");
    EXPECT_DOUBLE_EQ(rightOf(0), 1000);
    setting.compressesPunctuation = true;
    EXPECT_DOUBLE_EQ(rightOf(0), 800);
}

TEST_F(LineComposer, BlanksBesideTextDoNotCountForTheHeight) {
    type(U"一 二");
    items.items[1].size = 400;
    EXPECT_DOUBLE_EQ(compose()[0].height, 200);
}

TEST_F(LineComposer, JustifiedLinesReachTheMarginButNotTheLast) {
    type(U"一二三四五六七八aaaaa甲乙");
    format.alignment = LineAlignment::justified;
    ASSERT_EQ(lines(), (Lines{u"一二三四五六七八", u"aaaaa甲乙"}));
    EXPECT_NEAR(rightOf(0), 2000, 0.1);
    EXPECT_NEAR(rightOf(1), 900, 0.1);
    format.alignment = LineAlignment::distributed;
    EXPECT_NEAR(rightOf(1), 2000, 0.1);
}

TEST_F(LineComposer, NothingIsAddedBehindTheLastCharacterOfAJustifiedLine) {
    type(U"一二三四五六七八aaaaa甲乙");
    format.alignment = LineAlignment::justified;
    ASSERT_EQ(compose().size(), 2U);
    const std::vector<float> advances = strips[0].layer.texts.back().advances;
    ASSERT_EQ(advances.size(), 8U);
    EXPECT_FLOAT_EQ(advances[7], 200);
    EXPECT_NEAR(advances[6], 200 + 400.0 / 7, 0.01);
}

TEST_F(LineComposer, AnIndentInBothUnitsIsTheOneInCharactersAndInTheOfficeSuiteTheOneInTwips) {
    type(U"一");
    format.left = {500, 200};
    EXPECT_DOUBLE_EQ(leftOf(0), 400);
    setting.options.officeLines = true;
    EXPECT_DOUBLE_EQ(leftOf(0), 500);
    format.left.twips = 0;
    EXPECT_DOUBLE_EQ(leftOf(0), 400);
}

TEST_F(LineComposer, LinesStandInTheMiddleOrAtTheRight) {
    type(U"一二");
    format.alignment = LineAlignment::centre;
    EXPECT_DOUBLE_EQ(leftOf(0), 800);
    format.alignment = LineAlignment::right;
    EXPECT_DOUBLE_EQ(leftOf(0), 1600);
}

TEST_F(LineComposer, IndentsMoveTheFirstLineAndTheOthers) {
    type(U"一二三四五六七八九十");
    format.firstLine.characters = 200;
    format.left.twips = 200;
    EXPECT_EQ(lines(), (Lines{u"一二三四五六七", u"八九十"}));
    EXPECT_DOUBLE_EQ(leftOf(0), 600);
    EXPECT_DOUBLE_EQ(leftOf(1), 200);
}

TEST_F(LineComposer, ARightTabPutsWhatFollowsBeforeItsStopAndFillsTheGap) {
    type(U"一\t12");
    format.tabStops = {{2000, TabStop::Kind::right, u'.'}};
    EXPECT_EQ(lines(), (Lines{u"一................12"}));
    EXPECT_DOUBLE_EQ(rightOf(0), 2000);
}

TEST_F(LineComposer, AStopWhereAHangingParagraphsTextBeginsKeepsItsKind) {
    type(U"一\t甲");
    format.left.twips = 800;
    format.firstLine.twips = -800;
    format.tabStops = {{800, TabStop::Kind::right, 0}};
    EXPECT_DOUBLE_EQ(rightOf(0), 800);
    format.tabStops = {{1000, TabStop::Kind::right, 0}}; // the text's beginning comes first
    EXPECT_DOUBLE_EQ(rightOf(0), 1000);
    EXPECT_DOUBLE_EQ(compose()[0].layer.texts.back().x, 800);
}

TEST_F(LineComposer, ADecimalTabPutsThePointAtItsStop) {
    type(U"\t12.5");
    format.tabStops = {{1000, TabStop::Kind::decimal, 0}};
    EXPECT_DOUBLE_EQ(leftOf(0), 800);
}

TEST_F(LineComposer, TabsWithoutAStopGoToTheDefaultOnes) {
    type(U"一\t二\t三");
    setting.defaultTab = 420;
    compose();
    EXPECT_DOUBLE_EQ(strips[0].layer.texts[1].x, 420);
    EXPECT_DOUBLE_EQ(strips[0].layer.texts[2].x, 840);
}

TEST_F(LineComposer, ALineIsAsHighAsItsLargestCharacter) {
    type(U"一二");
    items.items[1].size = 400;
    EXPECT_DOUBLE_EQ(compose()[0].height, 400);
    EXPECT_DOUBLE_EQ(compose()[0].layer.texts[0].baseline, 320);
}

TEST_F(LineComposer, SpacingIsAMultipleAtLeastOrExact) {
    type(U"一");
    format.line = 360;
    EXPECT_DOUBLE_EQ(compose()[0].height, 300);
    format.spacing = ResolvedParagraph::Spacing::atLeast;
    EXPECT_DOUBLE_EQ(compose()[0].height, 360);
    format.line = 100;
    EXPECT_DOUBLE_EQ(compose()[0].height, 200);
    format.spacing = ResolvedParagraph::Spacing::exact;
    EXPECT_DOUBLE_EQ(compose()[0].height, 100);
}

TEST_F(LineComposer, LinesOnAGridTakeWholeLinesOfIt) {
    type(U"一");
    setting.grid.linePitch = 312;
    EXPECT_DOUBLE_EQ(compose()[0].height, 312);
    items.items[0].size = 400;
    EXPECT_DOUBLE_EQ(compose()[0].height, 624);
    format.line = 480; // twice as far apart: one unit of two lines is enough
    EXPECT_DOUBLE_EQ(compose()[0].height, 624);
    format.line = 240;
    format.snapsToGrid = false;
    EXPECT_DOUBLE_EQ(compose()[0].height, 400);
}

TEST_F(LineComposer, AnEmptyParagraphIsAsHighAsItsMark) {
    items.markSize = 240;
    ASSERT_EQ(compose().size(), 1U);
    EXPECT_DOUBLE_EQ(strips[0].height, 240);
}

TEST_F(LineComposer, ABreakEndsItsLineAndTheMarkStandsBehindIt) {
    type(U"一\v二\f");
    ASSERT_EQ(compose().size(), 3U);
    EXPECT_FALSE(strips[0].endsPage);
    EXPECT_TRUE(strips[1].endsPage);
    EXPECT_TRUE(strips[2].layer.texts.empty());
}

TEST_F(LineComposer, PicturesTakeTheirRoomInTheLine) {
    type(U"一二");
    items.items[1].kind = TextItem::Kind::picture;
    items.items[1].width = 1500;
    items.items[1].height = 900;
    ASSERT_EQ(compose().size(), 1U);
    EXPECT_DOUBLE_EQ(strips[0].height, 940); // the letter's descent stands below it
    ASSERT_EQ(strips[0].layer.pictures.size(), 1U);
    EXPECT_DOUBLE_EQ(strips[0].layer.pictures[0].x, 200);
    EXPECT_DOUBLE_EQ(strips[0].layer.pictures[0].y, 0);
}

TEST_F(LineComposer, ARightTabAtTheMarginGoesToTheNextLineWithWhatHasNoRoom) {
    type(U"一二三四五六七八九\t1234");
    for (const int stop : {2000, 1990}) { // contents often end a little before the line
        format.tabStops = {{stop, TabStop::Kind::right, u'.'}};
        EXPECT_EQ(lines()[0], u"一二三四五六七八九");
        EXPECT_EQ(lines()[1].substr(12), stop == 2000 ? u"....1234" : u"...1234");
    }
}

TEST_F(LineComposer, ARightTabStandsAtTheMarginUpToTwentyTwipsInFrontOfIt) {
    type(U"一二三四五六七八九\t1234");
    format.tabStops = {{1980, TabStop::Kind::right, u'.'}};
    EXPECT_TRUE(lines().at(1).ends_with(u".1234"));
    format.tabStops = {{1979, TabStop::Kind::right, u'.'}};
    EXPECT_EQ(lines().at(1), u"1234");
}

TEST_F(LineComposer, BlanksAtTheEndOfALineTakeNoRoomInWhateverAlignment) {
    type(U"一二  ");
    format.alignment = LineAlignment::right;
    EXPECT_DOUBLE_EQ(leftOf(0), 1600);
    format.alignment = LineAlignment::centre;
    EXPECT_DOUBLE_EQ(leftOf(0), 800);
}

TEST_F(LineComposer, TextAtAStopBeyondTheRightIndentStandsThere) {
    type(U"一\t1234");
    format.right.twips = 800;
    format.tabStops = {{2000, TabStop::Kind::right, u'.'}};
    EXPECT_EQ(lines(), (Lines{u"一..............1234"}));
    EXPECT_DOUBLE_EQ(rightOf(0), 2000);
    format.tabStops = {{1600, TabStop::Kind::centre, 0}};
    EXPECT_EQ(compose().size(), 1U);
    EXPECT_DOUBLE_EQ(rightOf(0), 1800);
    format.tabStops = {{2100, TabStop::Kind::right, 0}}; // beyond the margin too
    EXPECT_EQ(compose().size(), 1U);
    EXPECT_DOUBLE_EQ(rightOf(0), 2100);
}

TEST_F(LineComposer, TextInFrontOfAStopBeyondTheRightIndentEndsAtTheIndent) {
    type(U"一二三四五六七八九\t1234");
    format.right.twips = 800;
    format.tabStops = {{2000, TabStop::Kind::right, u'.'}};
    EXPECT_EQ(lines(), (Lines{u"一二三四五六", u"七八九..........1234"}));
}

TEST_F(LineComposer, SmallCapitalsTakeTheRoomOfTheirFont) {
    type(U"A");
    look.smallCapitals = true;
    look.halfPoints = 20;
    items.items[0].size = 160;
    items.markSize = 100;
    EXPECT_DOUBLE_EQ(compose()[0].height, 200);
}

TEST_F(LineComposer, LinesKeepClearOfObstacles) {
    type(std::u32string(20, U'一'));
    setting.obstacles = {{{0, 0, 800, 400}, true}};
    EXPECT_EQ(compose().size(), 3U);
    EXPECT_DOUBLE_EQ(leftOf(0), 800);
    EXPECT_DOUBLE_EQ(leftOf(2), 0);
    setting.obstacles = {{{0, 0, 800, 400}, false}};
    EXPECT_DOUBLE_EQ(leftOf(0), 0);
    EXPECT_DOUBLE_EQ(strips[0].height, 400 + 200);
    EXPECT_DOUBLE_EQ(strips[0].dropped, 400);
    EXPECT_DOUBLE_EQ(strips[0].layer.texts.front().baseline, 400 + 160);
}

TEST_F(LineComposer, LinesMayGoOnFromWithinTheParagraph) {
    type(std::u32string(25, U'一'));
    format.firstLine.twips = 400;
    format.before = 300;
    const Strips rest = composeLines(items, format, fonts, setting, 8);
    ASSERT_EQ(rest.size(), 2U);
    EXPECT_DOUBLE_EQ(rest[0].layer.texts.front().x, 0);
    EXPECT_DOUBLE_EQ(rest[0].before, 0);
    EXPECT_EQ(rest[0].at, 8U);
}

TEST_F(LineComposer, TheOfficeSuiteSqueezesCommasSoThatMoreFitsOnTheLine) {
    type(U"一二、三四、五六、七八九十");
    setting.compressesPunctuation = true;
    EXPECT_EQ(lines()[0], u"一二、三四、五六、七");
    setting.options.officeLines = true;
    EXPECT_EQ(lines()[0], u"一二、三四、五六、七八");
    EXPECT_NEAR(rightOf(0), 2000, 0.001);
    setting.compressesPunctuation = false;
    EXPECT_EQ(lines()[0], u"一二、三四、五六、七");
}

TEST_F(LineComposer, TwoSqueezedCommasMakeNoRoomForACharacter) {
    type(U"一二、三四、五六七八九十");
    setting.compressesPunctuation = true;
    setting.options.officeLines = true;
    EXPECT_EQ(lines()[0], u"一二、三四、五六七八");
}

TEST_F(LineComposer, CommasAreNotSqueezedForTextOfAnotherLookOrScriptBehindThem) {
    setting.compressesPunctuation = true;
    setting.options.officeLines = true;
    type(U"一二、三四、五六、七八九");
    const word::ResolvedText other;
    items.items[10].format = &other;
    EXPECT_EQ(lines()[0], u"一二、三四、五六、七");
    items.items.clear();
    type(U"一二、三四、五六、七a九");
    EXPECT_EQ(lines()[0], u"一二、三四、五六、七");
}

TEST_F(LineComposer, WhereIndentsLeaveNoRoomTheOfficeSuiteSetsOneCharacterALine) {
    type(U"aaaa");
    format.left.twips = 1500;
    format.right.twips = 800;
    EXPECT_EQ(lines(), (Lines{u"aa", u"aa"}));
    setting.options.officeLines = true;
    EXPECT_EQ(lines(), (Lines{u"a", u"a", u"a", u"a"}));
}

TEST_F(LineComposer, ATabReachesBeyondTheLineToAStopOfTheParagraph) {
    type(U"一\t二");
    format.tabStops = {{2500, TabStop::Kind::left, u'.'}};
    ASSERT_EQ(compose().size(), 2U);
    EXPECT_EQ(lines()[1], u"二");
    EXPECT_NEAR(rightOf(0), 2500, 1);
    format.tabStops.clear();
    setting.defaultTab = 2500;
    EXPECT_EQ(compose().size(), 3U);
}

TEST_F(LineComposer, TheLineBehindABreakHasThePositionOfTheMark) {
    type(U"一二\v");
    ASSERT_EQ(compose().size(), 2U);
    EXPECT_EQ(strips[0].at, 0U);
    EXPECT_EQ(strips[1].at, 3U);
}

TEST_F(LineComposer, NoLineEndsBetweenAPictureAndALatinWord) {
    type(std::u32string(20, U'a'));
    items.items[0].kind = TextItem::Kind::picture;
    items.items[0].width = 500;
    EXPECT_EQ(lines(), (Lines{std::u16string(15, u'a'), std::u16string(4, u'a')}));
    for (std::size_t i = 1; i < items.items.size(); ++i) {
        items.items[i].character = U'一';
    }
    items.items[0].width = 1950;
    EXPECT_TRUE(lines()[0].empty());
}

} // namespace
} // namespace qvnd::layout
