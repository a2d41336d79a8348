#include "generate/GenerationWorld.h"

using namespace Qt::StringLiterals;
using namespace qvnd::test;
using qvnd::jet::Value;

namespace {

class PageAndContents : public GenerationWorld {
protected:
    PageAndContents() { smallPlan(); }

    void page(const QString& field, const Value& value) {
        change(settings(), u"页面设置表"_s, field, value);
    }
    void contents(const QString& field, const Value& value) {
        change(settings(), u"页眉页脚表"_s, field, value);
    }
};

} // namespace

TEST_F(PageAndContents, AnythingButTheSideIsAGutterOnTop) {
    page(u"装订位置"_s, u"顶");
    build();
    EXPECT_TRUE(logged("PageSetup.GutterOnTop = true"));
    log.lines.clear();
    page(u"装订位置"_s, Value());
    build();
    EXPECT_TRUE(logged("PageSetup.GutterOnTop = true"));
}

TEST_F(PageAndContents, ABlankLengthIsReportedAndTheOthersAreSet) {
    page(u"页边距左"_s, Value());
    build();
    EXPECT_TRUE(logged("message [none]"));
    EXPECT_FALSE(logged("PageSetup.LeftMargin"));
    EXPECT_TRUE(logged("PageSetup.RightMargin = 30"));
}

TEST_F(PageAndContents, AnEmptyPageTableLeavesThePageAsItIs) {
    putEmptyTable(settings(), u"页面设置表"_s, pageRow());
    build();
    EXPECT_FALSE(logged("PageSetup"));
    EXPECT_FALSE(logged("message"));
}

TEST_F(PageAndContents, NumbersAreAlignedAndShownByYesAlone) {
    contents(u"是否右对齐"_s, Value());
    contents(u"是否显示页码"_s, u"否");
    build();
    EXPECT_TRUE(
        logged("TablesOfContents.Add Selection.Range, UseHeadingStyles true, levels 1 to 3, "
               "RightAlignPageNumbers false, IncludePageNumbers false"));
}

TEST_F(PageAndContents, LeadersHaveTheirNumbers) {
    const std::pair<const char16_t*, const char*> leaders[] = {
        {u"无", "0"}, {u"轻虚线", "1"}, {u"断连线", "2"}, {u"连连线", "3"}, {u"重虚线", "4"}};
    for (const auto& [style, number] : leaders) {
        log.lines.clear();
        contents(u"制表样式"_s, style);
        build();
        EXPECT_EQ(linesOf("TablesOfContents(1)"),
                  std::string("TablesOfContents(1).TabLeader = ") + number + "\n");
    }
}

TEST_F(PageAndContents, AnotherLeaderIsNotSet) {
    contents(u"制表样式"_s, u"波浪线");
    build();
    EXPECT_TRUE(logged("TablesOfContents.Add"));
    EXPECT_FALSE(logged("TablesOfContents(1)"));
}

TEST_F(PageAndContents, TheLowestLevelIsPassedAsStored) {
    contents(u"显示级别"_s, 12);
    build();
    EXPECT_TRUE(
        logged("TablesOfContents.Add Selection.Range, UseHeadingStyles true, levels 1 to 12,"));
}

TEST_F(PageAndContents, ABlankLowestLevelIsReported) {
    contents(u"显示级别"_s, Value());
    build();
    EXPECT_TRUE(logged("message [none]"));
    EXPECT_FALSE(logged("TablesOfContents.Add"));
}

TEST_F(PageAndContents, WithoutAHeaderAndFooterRowThereIsNoContentsTable) {
    putEmptyTable(settings(), u"页眉页脚表"_s, headerFooterRow());
    build();
    EXPECT_FALSE(logged("TablesOfContents"));
    EXPECT_TRUE(logged("Selection.TypeText 目录"));
    EXPECT_FALSE(logged("message"));
}
