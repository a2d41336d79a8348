#include "store/DatabaseCreation.h"
#include "store/Names.h"
#include "store/PlanTables.h"
#include "support/JetStore.h"

namespace qvnd::store {

using jet::FieldType;
using jet::Index;
using jet::TableDef;

class PlanTables : public test::JetStore {
protected:
    PlanTables() { state_.gWs = &state_.DBEngine.Workspaces(0); }

    static void expectField(const TableDef& table, std::size_t position, const QString& name,
                            FieldType type, int size) {
        ASSERT_LT(position, table.Fields.size());
        EXPECT_EQ(table.Fields[position].Name, name);
        EXPECT_EQ(table.Fields[position].Type, type);
        EXPECT_EQ(table.Fields[position].Size, size);
    }

    // An outline as it stands in a file.
    static void expectOutline(const TableDef& table) {
        ASSERT_EQ(table.Fields.size(), 4U);
        expectField(table, 0, u"名称"_qs, FieldType::Memo, 0);
        expectField(table, 1, u"Key"_qs, FieldType::Text, 255);
        expectField(table, 2, u"ID"_qs, FieldType::Long, 0);
        expectField(table, 3, u"是否文档"_qs, FieldType::Text, jet::defaultTextSize);
        for (const int text : {0, 1, 3}) {
            EXPECT_TRUE(table.Fields[static_cast<std::size_t>(text)].AllowZeroLength);
            EXPECT_EQ(table.Fields[static_cast<std::size_t>(text)].DefaultValue, u""_qs);
        }
        EXPECT_EQ(table.Fields[2].Attributes, 16);
        ASSERT_EQ(table.Indexes.size(), 2U);
        EXPECT_EQ(table.Indexes[0], (Index{u"PrimaryKey"_qs, false, true, {u"Key"_qs}}));
        EXPECT_EQ(table.Indexes[1], (Index{u"ID"_qs, true, true, {u"ID"_qs}}));
    }

    static void expectSingleMemo(const TableDef& table, const QString& field) {
        ASSERT_EQ(table.Fields.size(), 1U);
        expectField(table, 0, field, FieldType::Memo, 0);
        EXPECT_FALSE(table.Fields[0].AllowZeroLength);
        EXPECT_FALSE(table.Fields[0].DefaultValue.has_value());
        EXPECT_TRUE(table.Indexes.empty());
    }

    modMain state_;
};

TEST_F(PlanTables, TheUsersDatabaseHoldsItsFourTablesInOrder) {
    CreateUserDb(state_, pathOf(u"Db_UsTemplate.mdb"_qs));
    EXPECT_EQ(state_.gDbUser->TableDefs().Names(),
              (QStringList{u"遍历表"_qs, u"当前表"_qs, u"标书表"_qs, u"temp"_qs}));
}

TEST_F(PlanTables, TheListTheOpenPlanAndTheUnusedTableHaveOnePlainMemoEach) {
    CreateUserDb(state_, pathOf(u"Db_UsTemplate.mdb"_qs));
    const jet::TableDefs tables = state_.gDbUser->TableDefs();
    expectSingleMemo(tables[u"遍历表"_qs], u"名称"_qs);
    expectSingleMemo(tables[u"当前表"_qs], u"名称"_qs);
    expectSingleMemo(tables[u"标书表"_qs], u"位置"_qs);
}

TEST_F(PlanTables, TheScratchTableIsShapedLikeAnOutline) {
    CreateUserDb(state_, pathOf(u"Db_UsTemplate.mdb"_qs));
    expectOutline(state_.gDbUser->TableDefs()[u"temp"_qs]);
}

TEST_F(PlanTables, AnOutlineTableHasItsFieldsAndTheTwoIndexesWithTheMisleadingNames) {
    const auto db = create(u"a.mdb"_qs);
    db->TableDefs().Append(outlineTable(u"工程甲"_qs));
    expectOutline(db->TableDefs()[u"工程甲"_qs]);
}

TEST_F(PlanTables, AnInformationTableIsNamedOrgAndHasItsSixFields) {
    const auto db = create(u"a.mdb"_qs);
    db->TableDefs().Append(informationTable(u"工程甲"_qs));
    const TableDef table = db->TableDefs()[u"工程甲Org"_qs];
    ASSERT_EQ(table.Fields.size(), 6U);
    expectField(table, 0, u"建设单位"_qs, FieldType::Text, 100);
    expectField(table, 1, u"施工单位"_qs, FieldType::Text, 100);
    expectField(table, 2, u"编制人"_qs, FieldType::Text, 100);
    expectField(table, 3, u"审批人"_qs, FieldType::Text, 100);
    expectField(table, 4, u"编制日期"_qs, FieldType::Date, 0);
    expectField(table, 5, u"注释"_qs, FieldType::Memo, 0);
    for (const int text : {0, 1, 2, 3, 5}) {
        EXPECT_TRUE(table.Fields[static_cast<std::size_t>(text)].AllowZeroLength);
        EXPECT_EQ(table.Fields[static_cast<std::size_t>(text)].DefaultValue, u""_qs);
    }
    EXPECT_FALSE(table.Fields[4].AllowZeroLength);
    EXPECT_FALSE(table.Fields[4].DefaultValue.has_value());
    EXPECT_TRUE(table.Indexes.empty());
}

TEST_F(PlanTables, ANewTemplatesDatabaseHoldsTheListAloneWithoutPermissionOfEmptyText) {
    CreateTemplateDb(state_, pathOf(u"Db_Template.mdb"_qs));
    EXPECT_EQ(state_.gDbTemplate->TableDefs().Names(), QStringList{u"遍历表"_qs});
    expectSingleMemo(state_.gDbTemplate->TableDefs()[u"遍历表"_qs], u"名称"_qs);
}

TEST_F(PlanTables, ATemplatesNameMayNotBeEmpty) {
    CreateTemplateDb(state_, pathOf(u"Db_Template.mdb"_qs));
    const auto list = state_.gDbTemplate->OpenRecordset(u"遍历表"_qs);
    list->AddNew();
    EXPECT_EQ(test::errorOf([&] { list->Set(field::name, u""_qs); }), 3315);
}

TEST_F(PlanTables, WhetherARowIsADocumentMayBeAnyText) {
    const auto db = create(u"a.mdb"_qs);
    db->TableDefs().Append(outlineTable(u"T"_qs));
    const auto rows = db->OpenRecordset(u"T"_qs);
    for (const QString& text : {u"是"_qs, u"否"_qs, u"也许"_qs, u""_qs}) {
        rows->AddNew();
        rows->Set(field::key, u"T."_qs + text);
        rows->Set(field::isDocument, text);
        rows->Update();
    }
    EXPECT_EQ(rowsOf(*db, u"select 是否文档 from T order by ID asc"_qs),
              (QStringList{u"是"_qs, u"否"_qs, u"也许"_qs, u""_qs}));
}

TEST_F(PlanTables, CreatingOverAnExistingFileIsAnEngineErrorThatReachesTheCaller) {
    CreateUserDb(state_, pathOf(u"Db_UsTemplate.mdb"_qs));
    EXPECT_EQ(test::errorOf([&] { CreateUserDb(state_, pathOf(u"Db_UsTemplate.mdb"_qs)); }), 3204);
}

} // namespace qvnd::store
