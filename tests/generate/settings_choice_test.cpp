#include "generate/settings/SettingsChoice.h"

#include "support/Text.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace qvnd::generate;
using qvnd::jet::Value;

namespace {

std::optional<SelectionRow> settings(const Value& 是否设置, const Value& 设置名称) {
    SelectionRow row;
    row.是否设置 = 是否设置;
    row.设置名称 = 设置名称;
    return row;
}

std::optional<SelectionRow> cover(const Value& 是否封面, const Value& 封面名称) {
    SelectionRow row;
    row.是否封面 = 是否封面;
    row.封面名称 = 封面名称;
    return row;
}

// The tables that the row chooses for the body's font, the page, and header and footer.
void expectTables(const std::optional<SelectionRow>& row, const QString& body, const QString& page,
                  const QString& headerFooter) {
    EXPECT_EQ(bodyFontTable(row), body);
    EXPECT_EQ(pageTable(row), page);
    EXPECT_EQ(headerFooterTable(row), headerFooter);
}

} // namespace

TEST(SettingsChoice, WithoutARowTheWorkingTablesServe) {
    expectTables(std::nullopt, u"页面设置表"_s, u"页面设置表"_s, u"页眉页脚表"_s);
    EXPECT_EQ(chooseCover(std::nullopt).table, u"封面表"_s);
    EXPECT_FALSE(chooseCover(std::nullopt).customPage);
}

TEST(SettingsChoice, AChosenLibraryEntryIsItsNameAndASuffix) {
    const auto row = settings(u"是", u"甲");
    expectTables(row, u"甲页面"_s, u"甲页面"_s, u"甲眉脚"_s);
}

TEST(SettingsChoice, TheLibraryEntrysNameIsNotTrimmed) {
    expectTables(settings(u"是", u" 甲 "), u" 甲 页面"_s, u" 甲 页面"_s, u" 甲 眉脚"_s);
}

TEST(SettingsChoice, AnythingButYesIsTheWorkingTable) {
    for (const Value& flag : {Value(u"否"), Value(), Value(u"")}) {
        expectTables(settings(flag, u"甲"), u"页面设置表"_s, u"页面设置表"_s, u"页眉页脚表"_s);
    }
}

TEST(SettingsChoice, OnlyTheBodyFontTrimsTheYes) {
    const auto row = settings(u" 是 ", u"甲");
    expectTables(row, u"甲页面"_s, u"页面设置表"_s, u"页眉页脚表"_s);
}

TEST(SettingsChoice, ANameThatIsNullOrBlankFallsBackToTheWorkingTables) {
    for (const Value& name : {Value(), Value(u""), Value(u"  ")}) {
        expectTables(settings(u"是", name), u"页面设置表"_s, u"页面设置表"_s, u"页眉页脚表"_s);
    }
}

TEST(SettingsChoice, AWideBlankIsAName) {
    EXPECT_EQ(bodyFontTable(settings(u"是", u"\u3000")), u"\u3000页面"_s);
    EXPECT_EQ(pageTable(settings(u"是", u"\u3000")), u"\u3000页面"_s);
    EXPECT_EQ(bodyFontTable(settings(u"是\u3000", u"甲")), u"页面设置表"_s);
    EXPECT_EQ(chooseCover(cover(u"是", u"\u3000")).table, u"\u3000"_s);
}

TEST(SettingsChoice, ACoverIsTheChosenEntryOrTheWorkingCover) {
    EXPECT_EQ(chooseCover(cover(u"是", u"封面甲")).table, u"封面甲"_s);
    EXPECT_EQ(chooseCover(cover(u"否", u"封面甲")).table, u"封面表"_s);
    EXPECT_EQ(chooseCover(cover(u" 是", u"封面甲")).table, u"封面表"_s);
    EXPECT_EQ(chooseCover(cover(Value(), u"封面甲")).table, u"封面表"_s);
}

TEST(SettingsChoice, ABlankCoverNameIsTheWorkingCover) {
    for (const Value& name : {Value(), Value(u""), Value(u"  ")})
        EXPECT_EQ(chooseCover(cover(u"是", name)).table, u"封面表"_s);
}

TEST(SettingsChoice, ACustomPageIsWantedByYesAlone) {
    SelectionRow row;
    row.是否定义 = u"是";
    EXPECT_TRUE(chooseCover(row).customPage);
    row.是否定义 = u"否";
    EXPECT_FALSE(chooseCover(row).customPage);
    row.是否定义 = Value();
    EXPECT_FALSE(chooseCover(row).customPage);
}
