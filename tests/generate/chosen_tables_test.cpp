#include "generate/GenerationWorld.h"

#include "support/Text.h"

using namespace Qt::StringLiterals;
using namespace qvnd::test;

namespace {

// The library entries 甲页面, 甲眉脚 and 封面甲 differ from the working tables in one value each.
class ChosenTables : public GenerationWorld {
protected:
    ChosenTables() {
        smallPlan();
        putTable(settings(), u"甲页面"_s, {pageRow()});
        change(settings(), u"甲页面"_s, u"正文字体"_s, u"隶书");
        change(settings(), u"甲页面"_s, u"页边距上"_s, 4.0);
        putTable(settings(), u"甲眉脚"_s, {headerFooterRow()});
        change(settings(), u"甲眉脚"_s, u"页眉内容"_s, u"甲的页眉");
        change(settings(), u"甲眉脚"_s, u"显示级别"_s, 5);
        putTable(settings(), u"封面甲"_s, {coverRow()});
        change(settings(), u"封面甲"_s, u"工程名称"_s, u"甲的工程");
    }

    void select(const Row& row) { putTable(settings(), u"是否设置表"_s, {row}); }
    // Page and header come from the working tables.
    void expectBody(const QString& font) {
        EXPECT_EQ(window.BodyFontName, font);
        EXPECT_TRUE(logged("PageSetup.TopMargin = 15"));
        EXPECT_TRUE(logged("Selection.TypeText 页眉"));
    }
};

} // namespace

TEST_F(ChosenTables, ASettingLibraryEntryServesBodyPageContentsAndHeader) {
    select(selectionRow(u"否", nullptr, u"是", u"甲", u"否"));
    build();
    EXPECT_EQ(window.BodyFontName, u"隶书"_s);
    EXPECT_TRUE(logged("PageSetup.TopMargin = 40"));
    EXPECT_TRUE(logged("Selection.TypeText 甲的页眉"));
    EXPECT_TRUE(
        logged("TablesOfContents.Add Selection.Range, UseHeadingStyles true, levels 1 to 5"));
    EXPECT_TRUE(logged("Selection.TypeText 新楼工程"));
}

TEST_F(ChosenTables, ACoverLibraryEntryServesTheCoverAlone) {
    select(selectionRow(u"是", u"封面甲", u"否", nullptr, u"否"));
    build();
    EXPECT_TRUE(logged("Selection.TypeText 甲的工程"));
    expectBody(u"仿宋_GB2312"_s);
}

TEST_F(ChosenTables, AYesWithBlanksServesTheBodyFontAlone) {
    select(selectionRow(u"否", nullptr, u" 是", u"甲", u"否"));
    build();
    expectBody(u"隶书"_s);
}

TEST_F(ChosenTables, AYesWithABlankNameServesTheWorkingTables) {
    select(selectionRow(u"否", nullptr, u"是", u" ", u"否"));
    build();
    expectBody(u"仿宋_GB2312"_s);
}

TEST_F(ChosenTables, TheHeadingLevelsAreNeverALibrarys) {
    putTable(settings(), u"甲章节"_s, {{{u"级别"_s, u"1"}, {u"前缀"_s, u"甲"}}});
    select(selectionRow(u"否", nullptr, u"是", u"甲", u"否"));
    build();
    EXPECT_TRUE(logged("Selection.TypeText 第一章 概况"));
}

TEST_F(ChosenTables, AMissingLibraryTableIsPassedOverInSilence) {
    select(selectionRow(u"是", u"封面乙", u"是", u"乙", u"否"));
    EXPECT_EQ(build(), qvnd::generate::BuildOutcome::finished);
    EXPECT_FALSE(logged("message"));
    EXPECT_FALSE(logged("PageSetup"));
    EXPECT_FALSE(logged("TablesOfContents"));
    EXPECT_EQ(window.BodyFontName, u"宋体"_s);
    EXPECT_TRUE(logged("Sections(1).Footers(1).PageNumbers.Add 1, false"));
}

TEST_F(ChosenTables, ACoverNameIsNotBracketed) {
    putTable(settings(), u"封-面"_s, {coverRow()});
    select(selectionRow(u"是", u"封-面", u"否", nullptr, u"否"));
    build();
    EXPECT_TRUE(logged("message [none]"));
    EXPECT_FALSE(logged("Selection.TypeText 新楼工程"));
}

TEST_F(ChosenTables, TheSelectionTableMissingIsNoRow) {
    dropTable(settings(), u"是否设置表"_s);
    EXPECT_EQ(build(), qvnd::generate::BuildOutcome::finished);
    EXPECT_FALSE(logged("message"));
    EXPECT_TRUE(logged("PageSetup.TopMargin = 15"));
}
