#include "support/JetStore.h"

#include <utility>

namespace qvnd::jet {

using test::errorOf;

// A table with a field of every type, one row under way.
class FieldValues : public test::JetStore {
protected:
    FieldValues() : db_(create(u"a.mdb"_qs)) {
        TableDef table(u"V"_qs);
        table.Fields = {
            TableDef::CreateField(u"byte"_qs, FieldType::Byte),
            TableDef::CreateField(u"integer"_qs, FieldType::Integer),
            TableDef::CreateField(u"long"_qs, FieldType::Long),
            TableDef::CreateField(u"single"_qs, FieldType::Single),
            TableDef::CreateField(u"double"_qs, FieldType::Double),
            TableDef::CreateField(u"date"_qs, FieldType::Date),
            TableDef::CreateField(u"text"_qs, FieldType::Text, 4),
            TableDef::CreateField(u"memo"_qs, FieldType::Memo),
        };
        db_->TableDefs().Append(table);
        rows_ = db_->OpenRecordset(u"V"_qs);
        rows_->AddNew();
    }

    // What the field gives back once the row is written and read again.
    Value kept(const QString& field, const Value& value) {
        rows_->Set(field, value);
        rows_->Update();
        rows_->MoveLast();
        Value back = rows_->Get(field);
        rows_->AddNew();
        return back;
    }
    long setting(const QString& field, const Value& value) {
        return errorOf([&] { rows_->Set(field, value); });
    }

    std::unique_ptr<Database> db_;
    std::unique_ptr<Recordset> rows_;
};

TEST_F(FieldValues, TextBecomesTheNumberOrDateOfTheField) {
    EXPECT_EQ(kept(u"long"_qs, u"10"_qs), Value(10));
    EXPECT_EQ(kept(u"single"_qs, u"1.5"_qs), Value(1.5F));
    EXPECT_EQ(kept(u"double"_qs, u"0.1"_qs), Value(0.1));
    EXPECT_EQ(kept(u"date"_qs, u"2001-8-31"_qs), Value(QDate(2001, 8, 31)));
}

TEST_F(FieldValues, NumbersAndDatesBecomeTextInATextField) {
    EXPECT_EQ(kept(u"text"_qs, 12), Value(u"12"_qs));
    EXPECT_EQ(kept(u"memo"_qs, QDate(2001, 8, 31)), Value(u"2001-8-31"_qs));
}

TEST_F(FieldValues, AFractionDoesNotSurviveAWholeNumberField) {
    EXPECT_EQ(kept(u"long"_qs, u"10.4"_qs), Value(10));
    EXPECT_EQ(kept(u"long"_qs, u"10.5"_qs), Value(10));
    EXPECT_EQ(kept(u"long"_qs, u"11.5"_qs), Value(12));
}

TEST_F(FieldValues, TimesSurviveToTheSecond) {
    const QDateTime moment(QDate(2024, 2, 29), QTime(23, 59, 58));
    EXPECT_EQ(kept(u"date"_qs, moment), Value(moment));
}

TEST_F(FieldValues, TheWidestNumbersSurvive) {
    EXPECT_EQ(kept(u"long"_qs, -2147483647 - 1), Value(-2147483647 - 1));
    EXPECT_EQ(kept(u"integer"_qs, 32767), Value(32767));
    EXPECT_EQ(kept(u"integer"_qs, -32768), Value(-32768));
    EXPECT_EQ(kept(u"byte"_qs, 255), Value(255));
    EXPECT_EQ(kept(u"byte"_qs, 0), Value(0));
    EXPECT_EQ(kept(u"single"_qs, 3.4e38F), Value(3.4e38F));
}

TEST_F(FieldValues, WhatTheTypeCannotTakeIs3421) {
    EXPECT_EQ(setting(u"long"_qs, u"十"_qs), 3421);
    EXPECT_EQ(setting(u"long"_qs, u""_qs), 3421);
    EXPECT_EQ(setting(u"long"_qs, 3e9), 3421);
    EXPECT_EQ(setting(u"integer"_qs, 32768), 3421);
    EXPECT_EQ(setting(u"byte"_qs, -1), 3421);
    EXPECT_EQ(setting(u"byte"_qs, 256), 3421);
    EXPECT_EQ(setting(u"date"_qs, u"昨天"_qs), 3421);
}

TEST_F(FieldValues, AnEmptyTextIs3315UnlessTheFieldAllowsIt) {
    EXPECT_EQ(setting(u"text"_qs, u""_qs), 3315);
    EXPECT_EQ(setting(u"memo"_qs, u""_qs), 3315);
    db_->TableDefs().Append(outlineTable(u"T"_qs));
    const auto outline = db_->OpenRecordset(u"T"_qs);
    outline->AddNew();
    EXPECT_EQ(errorOf([&] { outline->Set(u"名称", u""_qs); }), 0);
}

TEST_F(FieldValues, ATextLongerThanItsFieldIs3163AndAMemoHasNoEnd) {
    EXPECT_EQ(setting(u"text"_qs, u"一二三四五"_qs), 3163);
    EXPECT_EQ(setting(u"text"_qs, u"一二三四"_qs), 0);
    const QString endless(100000, u'长');
    EXPECT_EQ(kept(u"memo"_qs, endless), Value(endless));
}

TEST_F(FieldValues, NullGoesIntoEveryField) {
    for (const Field& field : rows_->Fields()) {
        EXPECT_EQ(setting(field.Name, Value()), 0);
    }
    rows_->Update();
    rows_->MoveLast();
    EXPECT_TRUE(rows_->Get(u"memo").IsNull());
}

TEST_F(FieldValues, AnAutoIncrementFieldCannotBeSet) {
    db_->TableDefs().Append(outlineTable(u"T"_qs));
    const auto outline = db_->OpenRecordset(u"T"_qs);
    outline->AddNew();
    EXPECT_EQ(errorOf([&] { outline->Set(u"ID", 7); }), 3164);
}

class AutoIncrement : public test::JetStore {
protected:
    AutoIncrement() : db_(create(u"a.mdb"_qs)) { db_->TableDefs().Append(outlineTable(u"T"_qs)); }

    QStringList ids() { return rowsOf(*db_, u"select ID from T order by ID"_qs); }

    std::unique_ptr<Database> db_;
};

TEST_F(AutoIncrement, CountsFromOne) {
    addRows(*db_, u"T"_qs, {u"a"_qs, u"b"_qs, u"c"_qs});
    EXPECT_EQ(ids(), (QStringList{u"1"_qs, u"2"_qs, u"3"_qs}));
}

TEST_F(AutoIncrement, HasNoDefaultWhateverItsDefinitionSays) {
    TableDef table = outlineTable(u"U"_qs);
    table.Fields[2].DefaultValue = u"7"_qs;
    db_->TableDefs().Append(table);
    const auto rows = db_->OpenRecordset(u"U"_qs);
    rows->AddNew();
    EXPECT_TRUE(rows->Get(u"ID").IsNull());
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"select ID from U"_qs), QStringList{u"1"_qs});
}

TEST_F(AutoIncrement, MayBeTheFirstField) {
    TableDef table = outlineTable(u"U"_qs);
    std::swap(table.Fields[0], table.Fields[2]);
    db_->TableDefs().Append(table);
    addRows(*db_, u"U"_qs, {u"a"_qs, u"b"_qs});
    EXPECT_EQ(rowsOf(*db_, u"select ID,Key from U"_qs), (QStringList{u"1|a"_qs, u"2|b"_qs}));
    db_->Execute(u"select ID,Key into V from U where ID=2"_qs);
    const auto rows = db_->OpenRecordset(u"V"_qs);
    rows->AddNew();
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"select ID from V"_qs), (QStringList{u"2"_qs, u"3"_qs}));
}

TEST_F(AutoIncrement, NeverGivesANumberAgainEvenWhenTheLastRowsAreDeleted) {
    addRows(*db_, u"T"_qs, {u"a"_qs, u"b"_qs, u"c"_qs});
    db_->Execute(u"Delete * from T where ID > 1"_qs);
    addRows(*db_, u"T"_qs, {u"d"_qs});
    EXPECT_EQ(ids(), (QStringList{u"1"_qs, u"4"_qs}));
}

TEST_F(AutoIncrement, RemembersAcrossClosingAndWhenTheTableIsEmpty) {
    addRows(*db_, u"T"_qs, {u"a"_qs, u"b"_qs});
    db_->Execute(u"Delete * from T"_qs);
    db_->Close();
    db_ = open(u"a.mdb"_qs);
    addRows(*db_, u"T"_qs, {u"c"_qs});
    EXPECT_EQ(ids(), QStringList{u"3"_qs});
}

TEST_F(AutoIncrement, BehindTheWidestNumberIs6AndNoRowIsAdded) {
    TableDef source(u"S"_qs);
    source.Fields = {TableDef::CreateField(u"ID"_qs, FieldType::Long)};
    db_->TableDefs().Append(source);
    const auto rows = db_->OpenRecordset(u"S"_qs);
    rows->AddNew();
    rows->Set(u"ID", std::int32_t{2147483647});
    rows->Update();
    db_->Execute(u"INSERT INTO T SELECT * FROM S"_qs);
    EXPECT_EQ(errorOf([&] { addRows(*db_, u"T"_qs, {u"a"_qs}); }), 6);
    rows->MoveFirst();
    rows->Edit();
    rows->Set(u"ID", Value());
    rows->Update();
    EXPECT_EQ(errorOf([&] { db_->Execute(u"INSERT INTO T SELECT * FROM S"_qs); }), 6);
    EXPECT_EQ(ids(), QStringList{u"2147483647"_qs});
}

TEST_F(AutoIncrement, GoesOnWhenAnotherProgramAddsRowsInBetween) {
    DBEngine other;
    const auto theirs = other.Workspaces(0).OpenDatabase(db_->Name());
    addRows(*db_, u"T"_qs, {u"a"_qs});
    addRows(*theirs, u"T"_qs, {u"b"_qs, u"c"_qs});
    addRows(*db_, u"T"_qs, {u"d"_qs});
    EXPECT_EQ(ids(), (QStringList{u"1"_qs, u"2"_qs, u"3"_qs, u"4"_qs}));
}

} // namespace qvnd::jet
