#include "support/JetStore.h"

namespace qvnd::jet {

using test::errorOf;

class TableDefinitions : public test::JetStore {
protected:
    TableDefinitions() : db_(create(u"a.mdb"_qs)) {}

    long appending(const TableDef& table) {
        return errorOf([&] { db_->TableDefs().Append(table); });
    }
    static TableDef simple(const QString& name) {
        TableDef table(name);
        table.Fields = {TableDef::CreateField(u"a"_qs, FieldType::Text)};
        return table;
    }

    std::unique_ptr<Database> db_;
};

TEST_F(TableDefinitions, AreToldBackFromTheFileAsTheyWereAppended) {
    TableDef table = outlineTable(u"工程甲"_qs);
    table.Fields.push_back(TableDef::CreateField(u"b"_qs, FieldType::Byte));
    table.Fields.push_back(TableDef::CreateField(u"i"_qs, FieldType::Integer));
    table.Fields.push_back(TableDef::CreateField(u"s"_qs, FieldType::Single));
    table.Fields.push_back(TableDef::CreateField(u"d"_qs, FieldType::Double));
    table.Fields.push_back(TableDef::CreateField(u"日"_qs, FieldType::Date));
    table.Indexes.push_back(TableDef::CreateIndex(u"both"_qs, false, false, {u"日"_qs, u"s"_qs}));
    db_->TableDefs().Append(table);
    db_->Close();
    db_ = open(u"a.mdb"_qs);
    EXPECT_EQ(db_->TableDefs()[u"工程甲"_qs], table);
}

TEST_F(TableDefinitions, StandInTheOrderOfTheirCreation) {
    for (const QString& name : {u"c"_qs, u"a"_qs, u"b"_qs}) {
        db_->TableDefs().Append(simple(name));
    }
    const TableDefs tables = db_->TableDefs();
    EXPECT_EQ(tables.Names(), (QStringList{u"c"_qs, u"a"_qs, u"b"_qs}));
    EXPECT_EQ(tables.Count(), 3);
    EXPECT_EQ(tables[0].Name, u"c"_qs);
    EXPECT_EQ(tables[2].Name, u"b"_qs);
    EXPECT_EQ(tables.All()[2].Name, u"b"_qs);
    EXPECT_EQ(errorOf([&] { (void)tables[-1]; }), 3265);
    EXPECT_EQ(errorOf([&] { (void)tables[3]; }), 3265);
}

TEST_F(TableDefinitions, AreFoundWithoutCase) {
    db_->TableDefs().Append(simple(u"Plan"_qs));
    EXPECT_TRUE(db_->TableDefs().Contains(u"pLAN"_qs));
    EXPECT_EQ(db_->TableDefs()[u"PLAN"_qs].Name, u"Plan"_qs);
}

TEST_F(TableDefinitions, ATableThatExistsInAnyCaseIs3010) {
    db_->TableDefs().Append(simple(u"Plan"_qs));
    EXPECT_EQ(appending(simple(u"pLAN"_qs)), 3010);
}

TEST_F(TableDefinitions, FullWidthAndHalfWidthNamesAreTwoTables) {
    db_->TableDefs().Append(simple(u"A"_qs));
    EXPECT_EQ(appending(simple(u"Ａ"_qs)), 0);
    EXPECT_EQ(appending(simple(u"ａ"_qs)), 3010);
}

TEST_F(TableDefinitions, LookingUpOrDeletingAMissingTableIs3265) {
    EXPECT_EQ(errorOf([&] { (void)db_->TableDefs()[u"x"_qs]; }), 3265);
    EXPECT_EQ(errorOf([&] { (void)db_->TableDefs()[0]; }), 3265);
    EXPECT_EQ(errorOf([&] { db_->TableDefs().Delete(u"x"_qs); }), 3265);
    EXPECT_EQ(errorOf([&] { db_->TableDefs().Delete(u""_qs); }), 3265);
}

TEST_F(TableDefinitions, LookingUpAMissingFieldIs3265) {
    const TableDef table = outlineTable(u"T"_qs);
    EXPECT_EQ(table.FieldNamed(u"key").Size, 255);
    EXPECT_EQ(errorOf([&] { (void)table.FieldNamed(u"x"); }), 3265);
    EXPECT_EQ(table.FindField(u"x"), nullptr);
}

TEST_F(TableDefinitions, DeletingATableTakesItsRowsAndFreesItsName) {
    db_->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*db_, u"T"_qs, {u"T"_qs});
    db_->TableDefs().Delete(u"t"_qs);
    EXPECT_EQ(db_->TableDefs().Count(), 0);
    db_->TableDefs().Append(outlineTable(u"T"_qs));
    EXPECT_TRUE(rowsOf(*db_, u"select * from T"_qs).isEmpty());
}

TEST_F(TableDefinitions, AWalkMayDeleteOnItsWay) {
    for (const QString& name : {u"a"_qs, u"temp"_qs, u"b"_qs}) {
        db_->TableDefs().Append(simple(name));
    }
    TableDefs tables = db_->TableDefs();
    for (const QString& name : tables.Names()) {
        if (name == u"temp") {
            tables.Delete(name);
            tables.Refresh();
        }
    }
    EXPECT_EQ(tables.Names(), (QStringList{u"a"_qs, u"b"_qs}));
}

TEST_F(TableDefinitions, ATableWithoutFieldsIs3264) {
    EXPECT_EQ(appending(TableDef(u"x"_qs)), 3264);
}

TEST_F(TableDefinitions, AFieldNamedTwiceInAnyCaseIs3191) {
    TableDef table = simple(u"x"_qs);
    table.Fields.push_back(TableDef::CreateField(u"A"_qs, FieldType::Long));
    EXPECT_EQ(appending(table), 3191);
}

TEST_F(TableDefinitions, AnIndexOnAMissingFieldIs3409AndNoTableIsMade) {
    TableDef table = simple(u"x"_qs);
    table.Indexes = {TableDef::CreateIndex(u"i"_qs, false, true, {u"b"_qs})};
    EXPECT_EQ(appending(table), 3409);
    EXPECT_EQ(db_->TableDefs().Count(), 0);
}

TEST_F(TableDefinitions, ANameThatIsEmptyTooLongOrHasAForbiddenCharacterIs3125) {
    for (const QString& name : {u""_qs, u" x"_qs, u"a.b"_qs, u"a[b"_qs, u"a]b"_qs, u"a!b"_qs,
                                u"a`b"_qs, u"a\nb"_qs, QString(65, u'x')}) {
        EXPECT_EQ(appending(simple(name)), 3125) << name.toStdString();
    }
    EXPECT_EQ(appending(simple(QString(64, u'x'))), 0);
    TableDef table(u"fields"_qs);
    table.Fields = {TableDef::CreateField(u"a.b"_qs, FieldType::Text)};
    EXPECT_EQ(appending(table), 3125);
    table.Fields = {TableDef::CreateField(QString(64, u'a'), FieldType::Text)};
    EXPECT_EQ(appending(table), 0);
}

TEST_F(TableDefinitions, ATextWithoutASizeHoldsTheEnginesDefault) {
    EXPECT_EQ(TableDef::CreateField(u"a"_qs, FieldType::Text).Size, 255);
    EXPECT_EQ(TableDef::CreateField(u"a"_qs, FieldType::Text, 100).Size, 100);
    EXPECT_EQ(TableDef::CreateField(u"a"_qs, FieldType::Text, 1).Size, 1);
    EXPECT_EQ(TableDef::CreateField(u"a"_qs, FieldType::Memo).Size, 0);
}

TEST_F(TableDefinitions, ThoseThatAnotherProgramMadeShowAtTheNextLook) {
    DBEngine other;
    const auto theirs = other.Workspaces(0).OpenDatabase(db_->Name());
    EXPECT_EQ(db_->TableDefs().Count(), 0);
    theirs->TableDefs().Append(simple(u"x"_qs));
    EXPECT_TRUE(db_->TableDefs().Contains(u"x"_qs));
    theirs->TableDefs().Delete(u"x"_qs);
    EXPECT_FALSE(db_->TableDefs().Contains(u"x"_qs));
    theirs->TableDefs().Append(simple(u"y"_qs));
    EXPECT_EQ(db_->TableDefs()[u"y"_qs].Fields.size(), 1U);
    theirs->TableDefs().Append(simple(u"z"_qs));
    EXPECT_EQ(errorOf([&] { db_->TableDefs().Delete(u"z"_qs); }), 0);
    EXPECT_EQ(theirs->TableDefs().Names(), QStringList{u"y"_qs});
}

TEST_F(TableDefinitions, OfAClosedDatabaseAnswer3420) {
    TableDefs tables = db_->TableDefs();
    db_->Close();
    EXPECT_EQ(errorOf([&] { tables.Refresh(); }), 3420);
    EXPECT_EQ(errorOf([&] { tables.Append(simple(u"x"_qs)); }), 3420);
    EXPECT_EQ(errorOf([&] { tables.Delete(u"x"_qs); }), 3420);
    EXPECT_EQ(errorOf([&] { (void)tables.Contains(u"x"_qs); }), 3420);
    EXPECT_EQ(errorOf([&] { (void)tables[0]; }), 3420);
    EXPECT_EQ(errorOf([&] { (void)tables[u"x"_qs]; }), 3420);
    EXPECT_EQ(errorOf([&] { (void)tables.Names(); }), 3420);
    EXPECT_EQ(errorOf([&] { (void)tables.All(); }), 3420);
}

} // namespace qvnd::jet
