#include "generate/GenerationWorld.h"

#include "support/Text.h"

using namespace Qt::StringLiterals;
using namespace qvnd::test;
using qvnd::generate::ChapterColumn;
using qvnd::jet::Value;

namespace {

class LoadedSettings : public GenerationWorld {
protected:
    LoadedSettings() { smallPlan(); }
};

} // namespace

TEST_F(LoadedSettings, TheBodyFontIsThePageTablesFirstRecord) {
    Row second = pageRow();
    second[8].value = u"隶书";
    putTable(settings(), u"页面设置表"_s, {pageRow(), second});
    build();
    EXPECT_EQ(window.BodyFontName, u"仿宋_GB2312"_s);
    EXPECT_EQ(window.BodySizeName, u"小四"_s);
}

TEST_F(LoadedSettings, WithoutARecordTheBodyIsInTheDefaultFont) {
    putEmptyTable(settings(), u"页面设置表"_s, pageRow());
    build();
    EXPECT_EQ(window.BodyFontName, u"宋体"_s);
    EXPECT_EQ(window.BodySizeName, u"小四"_s);
    EXPECT_FALSE(logged("message"));
}

TEST_F(LoadedSettings, TheNumberWordsStandFromPlaceOne) {
    build();
    EXPECT_EQ(window.NumberWords.at(0), QString());
    EXPECT_EQ(window.NumberWords.at(1), u"一"_s);
    EXPECT_EQ(window.NumberWords.at(20), u"二十"_s);
}

TEST_F(LoadedSettings, ANumberTableOfMoreThanTwentyRowsReportsTheExtraRowAndGoesOn) {
    const auto rows = settings().OpenRecordset(u"Select * from 序号表"_s);
    rows->AddNew();
    rows->Set(u"一型", u"廿一");
    rows->Update();
    EXPECT_EQ(build(), qvnd::generate::BuildOutcome::finished);
    EXPECT_EQ(linesBetween("Selection.TypeParagraph", "progress 0.15"),
              "Selection.TypeParagraph\ndlgTB.hide\nmessage [none] 下标越界\ndlgTB.show\n"
              "Application.Activate\n");
    EXPECT_EQ(window.NumberWords.at(20), u"二十"_s);
    EXPECT_EQ(window.ChapterGrid.at(9, ChapterColumn::前缀), u"["_s);
}

TEST_F(LoadedSettings, AChapterTableOfMoreThanNineRowsReportsTheExtraRowAndGoesOn) {
    const auto rows = settings().OpenRecordset(u"Select * from 章节设置表"_s);
    rows->AddNew();
    rows->Set(u"级别", u"10");
    rows->Update();
    EXPECT_EQ(build(), qvnd::generate::BuildOutcome::finished);
    EXPECT_EQ(linesOf("message"), "message [none] 下标越界\n");
}

TEST_F(LoadedSettings, AChapterRowIsThePlaceInTheTableAndNotItsLevel) {
    change(settings(), u"章节设置表"_s, u"级别"_s, u"7");
    change(settings(), u"章节设置表"_s, u"前缀"_s, u"卷");
    build();
    EXPECT_EQ(window.ChapterGrid.at(1, ChapterColumn::级别), u"7"_s);
    EXPECT_TRUE(logged("Selection.TypeText 卷一章 概况"));
}

TEST_F(LoadedSettings, EveryColumnHasItsPlaceInTheGrid) {
    build();
    const auto& grid = window.ChapterGrid;
    EXPECT_EQ(grid.at(2, ChapterColumn::级别), u"2"_s);
    EXPECT_EQ(grid.at(2, ChapterColumn::字体), u"仿宋_GB2312"_s);
    EXPECT_EQ(grid.at(2, ChapterColumn::字号), u"小四"_s);
    EXPECT_EQ(grid.at(2, ChapterColumn::前缀), u"第"_s);
    EXPECT_EQ(grid.at(2, ChapterColumn::中缀), u"一"_s);
    EXPECT_EQ(grid.at(2, ChapterColumn::序号标志), u"一型"_s);
    EXPECT_EQ(grid.at(2, ChapterColumn::后缀), u"节"_s);
    EXPECT_EQ(grid.at(2, ChapterColumn::位置), u"中"_s);
    EXPECT_EQ(grid.at(2, ChapterColumn::置页头), u"否"_s);
    EXPECT_EQ(grid.at(2, ChapterColumn::带该级标题), u"是"_s);
}

TEST_F(LoadedSettings, ANullInAChapterRowIsEmpty) {
    change(settings(), u"章节设置表"_s, u"后缀"_s, Value());
    build();
    EXPECT_FALSE(logged("message"));
    EXPECT_TRUE(logged("Selection.TypeText 第一 概况"));
}

TEST_F(LoadedSettings, MissingNumberAndChapterTablesArePassedOver) {
    dropTable(settings(), u"序号表"_s);
    dropTable(settings(), u"章节设置表"_s);
    EXPECT_EQ(build(), qvnd::generate::BuildOutcome::finished);
    EXPECT_FALSE(logged("message"));
    EXPECT_TRUE(logged("Selection.TypeText 1 概况"));
}
