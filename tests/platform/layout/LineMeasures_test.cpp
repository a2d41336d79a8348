// What a line tells besides its text: spaces, breaks, notes, runs.

#include "platform/layout/ComposedLines.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace qvnd::layout {
namespace {

// With one stroke.
word::Border borderOf(int width, int thickness) {
    word::Border border;
    border.visible = true;
    border.width = width;
    border.strokes[0].width = width;
    border.thickness = thickness;
    return border;
}

class LineMeasures : public test::ComposedLines {};

TEST_F(LineMeasures, ALineMayBeATwipTooLong) {
    type(U"一二三四五六七八九十");
    setting.width = 1999;
    EXPECT_EQ(compose().size(), 1U);
    setting.width = 1998.5;
    EXPECT_EQ(compose().size(), 2U);
}

TEST_F(LineMeasures, SpacesStandAboveTheFirstLineAndBelowTheLast) {
    type(U"一二三四五六七八九十甲乙");
    format.before = 100;
    format.after = 50;
    ASSERT_EQ(compose().size(), 2U);
    EXPECT_DOUBLE_EQ(strips[0].before, 100);
    EXPECT_DOUBLE_EQ(strips[0].after, 0);
    EXPECT_DOUBLE_EQ(strips[1].before, 0);
    EXPECT_DOUBLE_EQ(strips[1].after, 50);
    strips = composeLines(items, format, fonts, setting, 10);
    ASSERT_EQ(strips.size(), 1U);
    EXPECT_DOUBLE_EQ(strips[0].before, 0) << "the paragraph began before";
    EXPECT_DOUBLE_EQ(strips[0].after, 50);
}

TEST_F(LineMeasures, SpacesInLinesGoByTheGridAndWinOverTwipsAndAutomaticOnesOverBoth) {
    type(U"一");
    format.before = format.after = 100;
    format.linesBefore = 150;
    format.linesAfter = 1;
    EXPECT_DOUBLE_EQ(compose()[0].before, 360);
    EXPECT_DOUBLE_EQ(compose()[0].after, 2.4);
    setting.grid.linePitch = 300;
    EXPECT_DOUBLE_EQ(compose()[0].before, 450);
    EXPECT_DOUBLE_EQ(compose()[0].after, 3);
    format.automaticBefore = true;
    EXPECT_DOUBLE_EQ(compose()[0].before, 280);
    EXPECT_DOUBLE_EQ(compose()[0].after, 3);
    format.automaticAfter = true;
    EXPECT_DOUBLE_EQ(compose()[0].after, 280);
}

TEST_F(LineMeasures, EachLineTellsItsPlaceAndWhatItsParagraphWants) {
    type(std::u32string(25, U'一'));
    ASSERT_EQ(compose().size(), 3U);
    EXPECT_FALSE(strips[0].keepsLines || strips[0].keepsWithNext || strips[0].contextual);
    EXPECT_TRUE(strips[0].controlsWidows);
    format.keepsLines = format.keepsWithNext = format.contextual = true;
    format.controlsWidows = false;
    compose();
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(strips[i].line, i);
        EXPECT_EQ(strips[i].lines, 3U);
        EXPECT_EQ(strips[i].at, 10 * i);
        EXPECT_TRUE(strips[i].keepsLines);
        EXPECT_TRUE(strips[i].keepsWithNext);
        EXPECT_TRUE(strips[i].contextual);
        EXPECT_FALSE(strips[i].controlsWidows);
    }
}

TEST_F(LineMeasures, OnlyTheFirstLineOfAParagraphStartsAPage) {
    type(U"一二三四五六七八九十甲乙");
    EXPECT_FALSE(compose()[0].startsPage);
    format.startsPage = true;
    EXPECT_TRUE(compose()[0].startsPage);
    EXPECT_FALSE(strips[1].startsPage);
    EXPECT_FALSE(composeLines(items, format, fonts, setting, 10)[0].startsPage);
    format.startsPage = false;
    items.startsPage = true; // with a break of a page
    EXPECT_TRUE(compose()[0].startsPage);
}

TEST_F(LineMeasures, NotesAndBreaksOfColumnsAreToldByTheirLine) {
    type(U"一二三四五六七八九十甲乙丙");
    items.items[3].note = 7;
    items.items[5].note = 8;
    items.items[11].kind = TextItem::Kind::columnBreak;
    ASSERT_EQ(compose().size(), 3U);
    EXPECT_EQ(strips[0].notes, (std::vector<std::uint32_t>{7, 8}));
    EXPECT_TRUE(strips[1].notes.empty());
    EXPECT_FALSE(strips[0].endsColumn);
    EXPECT_TRUE(strips[1].endsColumn);
    EXPECT_FALSE(strips[1].endsPage);
    EXPECT_FALSE(strips[2].endsColumn);
}

TEST_F(LineMeasures, CharactersOfOneLookAreOneRun) {
    word::ResolvedText other;
    const auto runsWith = [&](const std::function<void(TextItem&)>& change) {
        items = {};
        type(U"一二三");
        change(items.items[1]);
        return compose()[0].layer.texts.size();
    };
    EXPECT_EQ(runsWith([](TextItem&) {}), 1U);
    EXPECT_EQ(runsWith([&](TextItem& item) { item.format = &other; }), 3U);
    EXPECT_EQ(runsWith([](TextItem& item) { item.face = 1; }), 3U);
    EXPECT_EQ(runsWith([](TextItem& item) { item.size = 180; }), 3U);
    EXPECT_EQ(runsWith([](TextItem& item) { item.raised = 20; }), 3U);
    EXPECT_EQ(runsWith([](TextItem& item) { item.kind = TextItem::Kind::picture; }), 2U);
}

TEST_F(LineMeasures, ARunIsDrawnInItsLook) {
    type(U"一二");
    look.scalePercent = 150;
    look.colour = 0x123456;
    look.background = 0xABCDEF;
    look.deleted = look.bold = true;
    items.items[0].raised = items.items[1].raised = 30;
    const Layer& layer = compose()[0].layer;
    ASSERT_EQ(layer.texts.size(), 1U);
    EXPECT_DOUBLE_EQ(layer.texts[0].stretch, 1.5);
    EXPECT_EQ(layer.texts[0].colour, 0x123456U);
    EXPECT_TRUE(layer.texts[0].struckOut);
    EXPECT_TRUE(layer.texts[0].bold);
    EXPECT_FALSE(layer.texts[0].underline.isSeen());
    ASSERT_EQ(layer.fills.size(), 2U) << "behind each character";
    EXPECT_DOUBLE_EQ(layer.fills[1].x, 200);
    EXPECT_DOUBLE_EQ(layer.fills[1].width, 200);
    EXPECT_DOUBLE_EQ(layer.fills[1].height, 200);
    EXPECT_DOUBLE_EQ(layer.fills[1].y, layer.texts[0].baseline + 30 - 160);
    EXPECT_EQ(layer.fills[1].colour, 0xABCDEFU);
}

TEST_F(LineMeasures, TextOfOneBorderStandsInOneBox) {
    type(U"一二三");
    look.border = borderOf(10, 10);
    look.border.colour = 0x123456;
    word::ResolvedText plain;
    items.items[2].format = &plain;
    const Layer& layer = compose()[0].layer;
    ASSERT_EQ(layer.rules.size(), 4U);
    std::vector<std::vector<double>> lines;
    for (const Rule& rule : layer.rules) {
        const double foot = layer.texts[0].baseline;
        lines.push_back({rule.x1, rule.y1 - foot, rule.x2, rule.y2 - foot});
        EXPECT_EQ(rule.width, 10);
        EXPECT_EQ(rule.colour, 0x123456U);
    }
    EXPECT_EQ(lines,
              (std::vector<std::vector<double>>{
                  {0, -160, 400, -160}, {0, 40, 400, 40}, {0, -160, 0, 40}, {400, -160, 400, 40}}));
}

TEST_F(LineMeasures, TheBoxOfTextHasAllStrokesOfItsBorderOutside) {
    type(U"一二");
    look.border = borderOf(10, 30);
    look.border.strokes[1] = {10, 10};
    std::vector<std::vector<double>> lines;
    const Layer layer = compose()[0].layer;
    for (const Rule& rule : layer.rules) {
        const double foot = layer.texts[0].baseline;
        lines.push_back({rule.x1, rule.y1 - foot, rule.x2, rule.y2 - foot});
    }
    EXPECT_EQ(lines, (std::vector<std::vector<double>>{{0, -160, 400, -160},
                                                       {0, -180, 400, -180},
                                                       {0, 40, 400, 40},
                                                       {0, 60, 400, 60},
                                                       {0, -160, 0, 40},
                                                       {-20, -160, -20, 40},
                                                       {400, -160, 400, 40},
                                                       {420, -160, 420, 40}}));
}

TEST_F(LineMeasures, InTheOfficeSuiteABorderMakesItsLineHigher) {
    type(U"一二");
    word::ResolvedText bordered;
    bordered.border = borderOf(10, 30);
    bordered.border.space = 5;
    items.items[1].format = &bordered;
    EXPECT_EQ(compose()[0].height, 200);
    setting.options = officeOptions();
    EXPECT_EQ(compose()[0].height, 270);
    EXPECT_EQ(compose()[0].layer.texts[0].baseline, 160 + 35);
}

TEST_F(LineMeasures, TheGridSpacesTextThatKeepsToIt) {
    type(U"一二");
    setting.grid.characterSpacing = 25;
    EXPECT_DOUBLE_EQ(rightOf(0), 450);
    look.snapsToGrid = false;
    EXPECT_DOUBLE_EQ(rightOf(0), 400);
    look.snapsToGrid = true;
    format.snapsToGrid = false;
    EXPECT_DOUBLE_EQ(rightOf(0), 400);
}

TEST_F(LineMeasures, ALabelKeepsNoGapToTheText) {
    format.spacesLatin = true;
    type(U"一a");
    EXPECT_DOUBLE_EQ(rightOf(0), 350);
    items.items[0].isLabel = true;
    EXPECT_DOUBLE_EQ(rightOf(0), 300);
}

TEST_F(LineMeasures, ALabelStandsInFrontOfTheFirstLineAsFarAsItSays) {
    type(U"一二三四五六七八九十甲乙");
    format.left.twips = 400;
    items.labelBefore = 150;
    EXPECT_DOUBLE_EQ(leftOf(0), 250);
    EXPECT_DOUBLE_EQ(leftOf(1), 400);
}

TEST_F(LineMeasures, StretchedLinesLeaveWhatStandsInFrontOfATab) {
    type(U"一二\t三四五六七八甲乙丙丁");
    format.alignment = word::LineAlignment::justified;
    format.tabStops = {{650, word::TabStop::Kind::left, 0}};
    ASSERT_EQ(compose().size(), 2U);
    const auto& texts = strips[0].layer.texts;
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].advances, (std::vector<float>{200, 200}));
    EXPECT_DOUBLE_EQ(texts[1].x, 650);
    EXPECT_EQ(texts[1].text, u"三四五六七八");
    EXPECT_NEAR(rightOf(0), 2000, 0.1);
}

// The area of an outline.
PageArea areaOf(const Outline& outline) {
    const auto& points = outline.path.points;
    PageArea area{points.at(0).x, points.at(0).y, points.at(0).x, points.at(0).y};
    for (const PathPoint& point : points) {
        area = {std::min(area.left, point.x), std::min(area.top, point.y),
                std::max(area.right, point.x), std::max(area.bottom, point.y)};
    }
    return area;
}

TEST_F(LineMeasures, EmphasisMarksStandAtTheMiddleOfEachCharacterThatIsSeen) {
    using Emphasis = word::ResolvedText::Emphasis;
    type(U"甲 乙");
    look.emphasis = Emphasis::dotBelow;
    const Layer below = compose()[0].layer;
    ASSERT_EQ(below.outlines.size(), 2U);
    const PageArea dot = areaOf(below.outlines[0]);
    EXPECT_DOUBLE_EQ((dot.left + dot.right) / 2, 100);
    EXPECT_GT(dot.top, below.texts[0].baseline);
    EXPECT_TRUE(below.outlines[0].fill);
    EXPECT_DOUBLE_EQ(areaOf(below.outlines[1]).left - dot.left, 300);
    for (const Emphasis emphasis :
         {Emphasis::dotAbove, Emphasis::commaAbove, Emphasis::circleAbove}) {
        look.emphasis = emphasis;
        const Layer above = compose()[0].layer;
        ASSERT_EQ(above.outlines.size(), 2U);
        EXPECT_LE(areaOf(above.outlines[0]).bottom, above.texts[0].baseline - 160);
        EXPECT_EQ(above.outlines[0].fill.has_value(), emphasis != Emphasis::circleAbove);
        EXPECT_EQ(above.outlines[0].hasLine, emphasis == Emphasis::circleAbove);
    }
}

TEST_F(LineMeasures, AnEmphasisMarkHasTheColourOfItsCharacter) {
    type(U"甲");
    look.emphasis = word::ResolvedText::Emphasis::dotBelow;
    look.colour = 0x123456;
    const Strips& lines = compose();
    ASSERT_EQ(lines[0].layer.outlines.size(), 1U);
    EXPECT_EQ(lines[0].layer.outlines[0].fill, 0x123456U);
}

} // namespace
} // namespace qvnd::layout
