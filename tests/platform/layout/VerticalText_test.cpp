// Text of cells that runs downwards.

#include "platform/word/layout/VerticalText.h"

#include "platform/layout/TypedRows.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "support/Images.h"

#include <string>
#include <vector>

namespace qvnd::layout {
namespace {

using word::VerticalAlignment;
using word::withSprm8;
namespace sprm = word::sprm;

// Lines of 200 twips, their foot at 160, set downwards in a cell that is 600 twips wide.
class RunningDown : public testing::Test {
protected:
    void addLine(const std::u16string& text, const std::vector<float>& advances) {
        PlacedText run;
        run.baseline = 160;
        run.text = text;
        run.advances = advances;
        lines.emplace_back();
        lines.back().height = 200;
        lines.back().layer.texts = {run};
    }
    Strip set(VerticalAlignment alignment = VerticalAlignment::top) {
        return turnedText(lines, {600, 1000, alignment, word::TextFlow::down}, fonts, true);
    }

    Strips lines;
    test::FixedFonts fonts;
};

TEST_F(RunningDown, ChineseCharactersStandUprightOneBelowTheOther) {
    addLine(u"甲乙", {200, 200});
    const auto texts = set().layer.texts;
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].text, u"甲");
    EXPECT_DOUBLE_EQ(texts[0].x, 400);
    EXPECT_DOUBLE_EQ(texts[0].baseline, 176);
    EXPECT_EQ(texts[0].quarterTurns, 0);
    EXPECT_EQ(texts[1].text, u"乙");
    EXPECT_DOUBLE_EQ(texts[1].x, 400);
    EXPECT_DOUBLE_EQ(texts[1].baseline, 376);
}

TEST_F(RunningDown, OtherCharactersAndBracketsAreTurnedTogether) {
    addLine(u"甲（ab）乙", {200, 200, 100, 100, 200, 200});
    const auto texts = set().layer.texts;
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts[1].text, u"（ab）");
    EXPECT_EQ(texts[1].quarterTurns, 1);
    EXPECT_DOUBLE_EQ(texts[1].x, 600 - 160);
    EXPECT_DOUBLE_EQ(texts[1].baseline, 200);
    EXPECT_EQ(texts[1].advances, (std::vector<float>{200, 100, 100, 200}));
    EXPECT_EQ(texts[2].quarterTurns, 0);
    EXPECT_DOUBLE_EQ(texts[2].baseline, 976);
}

TEST_F(RunningDown, LinesFollowFromRightToLeftWithTheSpaceBetweenThem) {
    addLine(u"甲", {200});
    addLine(u"乙", {200});
    lines[0].after = 30;
    lines[1].before = 20;
    lines[1].paragraph = 1;
    const auto texts = set().layer.texts;
    EXPECT_DOUBLE_EQ(texts[0].x - texts[1].x, 250);
    EXPECT_DOUBLE_EQ(texts[0].baseline, texts[1].baseline);
}

TEST_F(RunningDown, TheLinesStandAtTheRightInTheMiddleOrAtTheLeft) {
    addLine(u"甲", {200});
    EXPECT_DOUBLE_EQ(set(VerticalAlignment::centre).layer.texts[0].x, 200);
    EXPECT_DOUBLE_EQ(set(VerticalAlignment::bottom).layer.texts[0].x, 0);
}

TEST_F(RunningDown, FillsAndRulesAreTurnedAndNotesAreKept) {
    addLine(u"甲", {200});
    lines[0].layer.fills = {{10, 20, 100, 50, 0xFF}};
    lines[0].layer.rules = {{0, 180, 90, 180, 10, {}}};
    lines[0].notes = {7};
    const Strip strip = set();
    const Fill& fill = strip.layer.fills.at(0);
    EXPECT_DOUBLE_EQ(fill.x, 600 - 20 - 50);
    EXPECT_DOUBLE_EQ(fill.y, 10);
    EXPECT_DOUBLE_EQ(fill.width, 50);
    EXPECT_DOUBLE_EQ(fill.height, 100);
    const Rule& rule = strip.layer.rules.at(0);
    EXPECT_DOUBLE_EQ(rule.x1, 420);
    EXPECT_DOUBLE_EQ(rule.x2, 420);
    EXPECT_DOUBLE_EQ(rule.y1, 0);
    EXPECT_DOUBLE_EQ(rule.y2, 90);
    EXPECT_EQ(strip.notes, std::vector<std::uint32_t>{7});
}

class VerticalCells : public test::TypedRows {
protected:
    static constexpr unsigned downwards = 5U << 2U;
    static constexpr unsigned startsMerge = 0x60;
    static constexpr unsigned goesOn = 0x20;
};

TEST_F(VerticalCells, TheirLinesAreAsLongAsTheirRowIsHigh) {
    typeRow({u"一二三四五", u"甲\v乙\v丙"}, {0, 1000, 2000}, {downwards, 0});
    type(u"后\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"一").x, 1000 + 1000 - 108 - 200);
    EXPECT_DOUBLE_EQ(textAt(page, u"二").baseline - textAt(page, u"一").baseline, 200);
    EXPECT_DOUBLE_EQ(textAt(page, u"一").x - textAt(page, u"四").x, 200);
    EXPECT_DOUBLE_EQ(textAt(page, u"四").baseline, textAt(page, u"一").baseline);
    EXPECT_NEAR(textAt(page, u"后").baseline - textAt(page, u"丙").baseline, 200, 20);
}

TEST_F(VerticalCells, AMergedOneHasTheHeightOfAllItsRows) {
    typeRow({u"一二三", u"甲"}, {0, 1000, 2000}, {downwards | startsMerge, 0});
    typeRow({u"丁", u"乙"}, {0, 1000, 2000}, {downwards | goesOn, 0});
    type(u"后\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"二").x, textAt(page, u"一").x);
    EXPECT_DOUBLE_EQ(textAt(page, u"三").x, textAt(page, u"一").x - 200);
    EXPECT_NEAR(textAt(page, u"后").baseline - textAt(page, u"甲").baseline, 400, 40);
}

TEST_F(RunningDown, WhatFloatsAtAnyOfTheLinesIsKept) {
    addLine(u"甲", {200});
    addLine(u"乙", {200});
    lines[0].floats.resize(1);
    lines[1].floats.resize(2);
    EXPECT_EQ(set().floats.size(), 3U);
}

TEST_F(VerticalCells, PicturesStandUprightInThem) {
    auto picture = *word::Picture::fromImage(test::png(96, 48));
    picture.setWidth(400);
    picture.setHeight(300);
    document.tables.blobs.push_back(picture.blob());
    typeRow({u"\x01乙", u"甲\v乙\v丙\v丁"}, {0, 1000, 2000}, {downwards, 0});
    main.characters = {
        {1, intern(withSprm8(word::withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1))},
        {main.size() - 1, {}}};
    type(u"后\r");
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.pictures.size(), 1U);
    const PlacedPicture& placed = page.layer.pictures[0];
    EXPECT_DOUBLE_EQ(placed.width, 400);
    EXPECT_DOUBLE_EQ(placed.height, 300);
    EXPECT_DOUBLE_EQ(placed.x + placed.width, 1000 + 1000 - 108);
    const PlacedText* below = nullptr;
    for (const PlacedText& text : page.layer.texts) {
        below = below == nullptr && text.text == u"乙" ? &text : below;
    }
    ASSERT_NE(below, nullptr);
    EXPECT_DOUBLE_EQ(below->baseline, placed.y + 300 + 176);
}

TEST_F(VerticalCells, TextThatRunsUpwardsHasItsLinesFromLeftToRight) {
    constexpr unsigned upwards = 3U << 2U;
    typeRow({u"一二\v三", u"甲\v乙\v丙"}, {0, 1000, 2000}, {upwards, 0});
    type(u"后\r");
    const Page page = pages().at(0);
    const PlacedText& first = textAt(page, u"一二");
    EXPECT_DOUBLE_EQ(first.x, 1000 + 108 + 160);
    EXPECT_NEAR(first.baseline, textAt(page, u"后").baseline - 160, 20)
        << "from the foot of the row";
    EXPECT_EQ(first.quarterTurns, -1);
    EXPECT_DOUBLE_EQ(textAt(page, u"三").x - first.x, 200);
    EXPECT_DOUBLE_EQ(textAt(page, u"三").baseline, first.baseline);
    EXPECT_NEAR(textAt(page, u"后").baseline - textAt(page, u"丙").baseline, 200, 20);
}

} // namespace
} // namespace qvnd::layout
