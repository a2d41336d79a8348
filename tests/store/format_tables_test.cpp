#include "store/DatabaseCreation.h"
#include "store/FormatTables.h"
#include "support/JetStore.h"

namespace qvnd::store {

using jet::Field;
using jet::FieldType;
using jet::TableDef;

// A new Db_BidSet.mdb, made on 2001-08-31.
class FormatTables : public test::JetStore {
protected:
    FormatTables() {
        state_.gWs = &state_.DBEngine.Workspaces(0);
        CreateBidSetDb(state_, pathOf(u"Db_BidSet.mdb"_qs), QDate(2001, 8, 31));
    }

    TableDef table(const QString& name) { return state_.gDbBidSet->TableDefs()[name]; }
    QStringList rows(const QString& query) { return rowsOf(*state_.gDbBidSet, query); }

    // Fields as "name type size", type by number; size only for text.
    static QStringList shapeOf(const TableDef& table) {
        QStringList shape;
        for (const Field& field : table.Fields) {
            shape
                << u"%1 %2 %3"_qs.arg(field.Name).arg(static_cast<int>(field.Type)).arg(field.Size);
        }
        return shape;
    }

    modMain state_;
};

TEST_F(FormatTables, StandInTheOrderOfTheirCreation) {
    EXPECT_EQ(state_.gDbBidSet->TableDefs().Names(),
              (QStringList{u"自定义表"_qs, u"封面库"_qs, u"当前自定义"_qs, u"设置库"_qs,
                           u"是否设置表"_qs, u"序号表"_qs, u"封面表"_qs, u"章节设置表"_qs,
                           u"页眉页脚表"_qs, u"页面设置表"_qs}));
}

TEST_F(FormatTables, CustomPagesTableHasItsFields) {
    EXPECT_EQ(shapeOf(table(u"自定义表"_qs)), (QStringList{u"路径 12 0"_qs, u"ID 4 0"_qs}));
}

TEST_F(FormatTables, PlainListsHaveOneMemoWithoutPermissionOfEmptyText) {
    for (const auto& [name, field] :
         {std::pair{u"封面库"_qs, u"名称"_qs}, std::pair{u"当前自定义"_qs, u"路径"_qs},
          std::pair{u"设置库"_qs, u"名称"_qs}}) {
        const TableDef list = table(name);
        EXPECT_EQ(shapeOf(list), QStringList{field + u" 12 0"_qs});
        EXPECT_FALSE(list.Fields[0].AllowZeroLength);
    }
}

TEST_F(FormatTables, SelectionTableHasItsFields) {
    EXPECT_EQ(shapeOf(table(u"是否设置表"_qs)),
              (QStringList{u"封面名称 12 0"_qs, u"是否封面 10 255"_qs, u"设置名称 12 0"_qs,
                           u"是否设置 10 255"_qs, u"是否定义 10 255"_qs}));
}

TEST_F(FormatTables, NumberingTableHasItsFields) {
    EXPECT_EQ(shapeOf(table(u"序号表"_qs)),
              (QStringList{u"一型 10 255"_qs, u"I型 10 255"_qs, u"A型 10 255"_qs, u"aa型 10 255"_qs,
                           u"序号 10 255"_qs}));
}

TEST_F(FormatTables, CoverTableHasItsFields) {
    EXPECT_EQ(
        shapeOf(table(u"封面表"_qs)),
        (QStringList{u"工程名称 12 0"_qs, u"工程字体 10 255"_qs, u"工程字号 10 255"_qs,
                     u"单位名称 12 0"_qs, u"单位字体 10 255"_qs, u"单位字号 10 255"_qs,
                     u"日期 8 0"_qs, u"日期字体 10 255"_qs, u"日期字号 10 255"_qs,
                     u"图片 10 255"_qs, u"图片宽度 4 0"_qs, u"图片高度 4 0"_qs, u"ID 4 0"_qs}));
}

TEST_F(FormatTables, ChapterTableHasItsFields) {
    EXPECT_EQ(
        shapeOf(table(u"章节设置表"_qs)),
        (QStringList{u"级别 10 255"_qs, u"字体 10 255"_qs, u"字号 10 255"_qs, u"前缀 10 255"_qs,
                     u"中缀 10 255"_qs, u"序号标志 10 255"_qs, u"后缀 10 255"_qs, u"位置 10 255"_qs,
                     u"置页头 10 255"_qs, u"带该级标题 10 255"_qs, u"ID 4 0"_qs}));
}

TEST_F(FormatTables, HeaderAndFooterTableHasItsFields) {
    EXPECT_EQ(shapeOf(table(u"页眉页脚表"_qs)),
              (QStringList{u"是否带页眉 10 255"_qs, u"页眉内容 12 0"_qs, u"页眉字体 10 255"_qs,
                           u"页眉字号 10 255"_qs, u"页眉位置 10 255"_qs, u"是否带页脚 10 255"_qs,
                           u"页脚内容 12 0"_qs, u"页脚字体 10 255"_qs, u"页脚字号 10 255"_qs,
                           u"页脚位置 10 255"_qs, u"是否右对齐 10 255"_qs, u"制表样式 10 255"_qs,
                           u"显示级别 4 0"_qs, u"是否显示页码 10 255"_qs, u"ID 4 0"_qs}));
}

TEST_F(FormatTables, PageSetupTableHasItsFields) {
    EXPECT_EQ(
        shapeOf(table(u"页面设置表"_qs)),
        (QStringList{u"页边距上 6 0"_qs, u"页边距下 6 0"_qs, u"页边距左 6 0"_qs, u"页边距右 6 0"_qs,
                     u"装订距离 6 0"_qs, u"装订位置 10 255"_qs, u"正文字体 10 255"_qs,
                     u"正文字号 10 255"_qs, u"距页眉 6 0"_qs, u"距页脚 6 0"_qs, u"ID 4 0"_qs}));
}

TEST_F(FormatTables, RuledOnesAllowEmptyTextAndHaveWholeNumbersZeroByDefault) {
    for (const TableDef& definition : state_.gDbBidSet->TableDefs().All()) {
        const bool plain =
            QStringList{u"封面库"_qs, u"当前自定义"_qs, u"设置库"_qs}.contains(definition.Name);
        for (const Field& field : definition.Fields) {
            EXPECT_EQ(field.AllowZeroLength, field.IsText() && !plain);
            EXPECT_EQ(field.DefaultValue.has_value(), field.Type == FieldType::Long);
            EXPECT_EQ(field.DefaultValue.value_or(u"0"_qs), u"0"_qs);
        }
    }
}

TEST_F(FormatTables, IdNumbersTheRowsByItself) {
    for (const TableDef& definition : state_.gDbBidSet->TableDefs().All()) {
        for (const Field& field : definition.Fields) {
            EXPECT_EQ(field.IsAutoIncrement(), field.Name == u"ID");
        }
        EXPECT_TRUE(definition.Indexes.empty());
    }
}

TEST_F(FormatTables, NumberingBeginsWithTwentyRows) {
    EXPECT_EQ(
        rows(u"select 序号,一型,I型,A型,aa型 from 序号表"_qs),
        (QStringList{
            u"1|一|1|A|a"_qs,     u"2|二|2|B|b"_qs,     u"3|三|3|C|c"_qs,     u"4|四|4|D|d"_qs,
            u"5|五|5|E|e"_qs,     u"6|六|6|F|f"_qs,     u"7|七|7|G|g"_qs,     u"8|八|8|H|h"_qs,
            u"9|九|9|I|i"_qs,     u"10|十|10|J|j"_qs,   u"11|十一|11|K|k"_qs, u"12|十二|12|L|l"_qs,
            u"13|十三|13|M|m"_qs, u"14|十四|14|N|n"_qs, u"15|十五|15|O|o"_qs, u"16|十六|16|P|p"_qs,
            u"17|十七|17|Q|q"_qs, u"18|十八|18|R|r"_qs, u"19|十九|19|S|s"_qs, u"20|二十|20|T|t"_qs,
        }));
}

TEST_F(FormatTables, CoverBeginsWithOneRowDatedTheDayOfItsCreationAndNoPicture) {
    EXPECT_EQ(rows(u"select * from 封面表"_qs),
              QStringList{u"工程名称|仿宋_GB2312|小四|单位名称|仿宋_GB2312|小四|2001-8-31|"
                          "仿宋_GB2312|小四|Null|10|10|1"_qs});
}

TEST_F(FormatTables, ChaptersBeginWithNineLevels) {
    EXPECT_EQ(
        rows(u"select 级别,前缀,中缀,后缀,序号标志,置页头 from 章节设置表 order by ID asc"_qs),
        (QStringList{
            u"1|第|一|章|一型|是"_qs,
            u"2|第|一|节|一型|否"_qs,
            u"3|第|一|小节|一型|否"_qs,
            u"4||一||一型|否"_qs,
            u"5|(|一|)|一型|否"_qs,
            u"6|[|一|]|一型|否"_qs,
            u"7||1||I型|否"_qs,
            u"8|(|1|)|I型|否"_qs,
            u"9|[|一|]|I型|否"_qs,
        }));
}

TEST_F(FormatTables, EveryChapterRowHasTheUsualFontSizePositionAndTitle) {
    const QStringList common = rows(u"select 字体,字号,位置,带该级标题 from 章节设置表"_qs);
    EXPECT_EQ(common.size(), 9);
    EXPECT_EQ(common.count(u"仿宋_GB2312|小四|中|是"_qs), 9);
}

TEST_F(FormatTables, HeaderAndFooterBeginWithOneRowWithoutRightAlignment) {
    EXPECT_EQ(rows(u"select * from 页眉页脚表"_qs),
              QStringList{u"是|页眉|仿宋_GB2312|小四|中|是|页脚|仿宋_GB2312|小四|中|Null|轻虚线|3|"
                          "是|1"_qs});
}

TEST_F(FormatTables, PageSetupBeginsWithOneRow) {
    EXPECT_EQ(rows(u"select * from 页面设置表"_qs),
              QStringList{u"1.5|1.5|1.5|1.5|0|边|仿宋_GB2312|小四|1|1|1"_qs});
}

TEST_F(FormatTables, LibrariesSelectionAndCustomPagesStartEmpty) {
    for (const QString& name :
         {u"自定义表"_qs, u"封面库"_qs, u"当前自定义"_qs, u"设置库"_qs, u"是否设置表"_qs}) {
        EXPECT_TRUE(rows(u"select * from "_qs + name).isEmpty());
    }
}

} // namespace qvnd::store
