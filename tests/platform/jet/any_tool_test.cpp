#include "platform/jet/file/Connection.h"
#include "support/JetStore.h"
#include "support/PlainSqlite.h"

namespace qvnd::jet {

using test::errorOf;
using test::PlainSqlite;

// What an SQLite tool that knows nothing of us makes of our files.
class AnySqliteTool : public test::JetStore {
protected:
    AnySqliteTool() : db_(create(u"a.mdb"_qs)) {}

    QStringList reads(const QString& sql) { return PlainSqlite(pathOf(u"a.mdb"_qs)).rows(sql); }
    QStringList tables() {
        return reads(
            u"select name from sqlite_schema where type='table' and name not like 'jet~_%' "
            "escape '~' and name<>'sqlite_sequence' order by rowid"_qs);
    }
    static TableDef texts(const QString& name, const QStringList& fields) {
        TableDef table(name);
        for (const QString& field : fields) {
            table.Fields.push_back(TableDef::CreateField(field, FieldType::Text));
        }
        return table;
    }

    std::unique_ptr<Database> db_;
};

TEST_F(AnySqliteTool, ReadsAnOutlineByTheNamesOfTableAndFields) {
    db_->TableDefs().Append(outlineTable(u"滨江工程"_qs));
    addRows(*db_, u"滨江工程"_qs, {u"滨江工程"_qs, u"滨江工程.1"_qs});
    const auto rows = db_->OpenRecordset(u"滨江工程"_qs);
    rows->AddNew();
    rows->Set(u"名称", u"简介"_qs);
    rows->Set(u"Key", u"滨江工程.2"_qs);
    rows->Set(u"是否文档", u"是"_qs);
    rows->Update();
    EXPECT_EQ(reads(u"select 名称, \"Key\" from \"滨江工程\" where 是否文档='是' order by ID"_qs),
              QStringList{u"简介|滨江工程.2"_qs});
    EXPECT_EQ(reads(u"select * from 滨江工程 where ID=1"_qs),
              QStringList{u"滨江工程|滨江工程|1|否"_qs});
}

TEST_F(AnySqliteTool, FindsNoCollationAndNoFunctionOfOursInTheFile) {
    db_->TableDefs().Append(outlineTable(u"甲"_qs));
    db_->TableDefs().Append(texts(u"乙"_qs, {u"名称"_qs}));
    addRows(*db_, u"甲"_qs, {u"甲"_qs, u"甲.1"_qs});
    EXPECT_EQ(reads(u"select count(*) from sqlite_schema where sql like '%jet' or "
                    "sql like '%collate jet%' or sql like '%jet~_like%' escape '~'"_qs),
              QStringList{u"0"_qs});
    EXPECT_TRUE(PlainSqlite(pathOf(u"a.mdb"_qs)).isSound());
    EXPECT_EQ(reads(u"select Key from 甲 order by Key"_qs).size(), 2);
}

TEST_F(AnySqliteTool, MakesTheTablesAnewFromWhatTheFileSaysOfThem) {
    db_->TableDefs().Append(outlineTable(u"a\"b'c"_qs));
    db_->TableDefs().Append(texts(u"order"_qs, {u"select"_qs, u"行 号"_qs, u"\"x\""_qs}));
    PlainSqlite copy(pathOf(u"copy.db"_qs));
    for (const QString& sql : reads(u"select sql from sqlite_schema where sql is not null and "
                                    "name<>'sqlite_sequence' order by rowid"_qs)) {
        EXPECT_EQ(copy.rows(sql), QStringList()) << sql.toStdString();
    }
    EXPECT_EQ(copy.rows(u"select name from pragma_table_info('order')"_qs),
              (QStringList{u"select"_qs, u"行 号"_qs, u"\"x\""_qs, u"rowid"_qs}));
}

TEST_F(AnySqliteTool, SeesTheNamesThatTheFileNeedsItselfWithAPointInFrontAndOnlyThem) {
    const QStringList own{u"sqlite_甲"_qs, u"SQLite_x"_qs, u"jet_fields"_qs, u"JET_乙"_qs};
    const QStringList free{u"sqlite"_qs, u"jets"_qs, u"t1"_qs, u"temp"_qs, u"main"_qs, u"rowid"_qs};
    for (const QString& name : own + free) {
        db_->TableDefs().Append(outlineTable(name));
        addRows(*db_, name, {u"k"_qs});
        EXPECT_EQ(rowsOf(*db_, u"select Key from ["_qs + name + u"]"_qs), QStringList{u"k"_qs});
    }
    QStringList expected;
    for (const QString& name : own) {
        expected << u"."_qs + name;
    }
    EXPECT_EQ(tables(), expected + free);
    db_->TableDefs().Append(texts(u"列"_qs, {u"RowId"_qs, u"oid"_qs, u"_rowid_"_qs}));
    EXPECT_EQ(reads(u"select name from pragma_table_info('列')"_qs),
              (QStringList{u".RowId"_qs, u"oid"_qs, u"_rowid_"_qs, u"rowid"_qs}));
    db_->Close();
    db_ = open(u"a.mdb"_qs);
    EXPECT_EQ(db_->TableDefs().Names(), own + free + QStringList{u"列"_qs});
    EXPECT_EQ(db_->TableDefs()[u"列"_qs].Fields[0].Name, u"RowId"_qs);
}

TEST_F(AnySqliteTool, SeesAPrimaryKeyInEveryTable) {
    db_->TableDefs().Append(outlineTable(u"甲"_qs));
    db_->TableDefs().Append(texts(u"乙"_qs, {u"名称"_qs}));
    db_->Execute(u"select * into 丙 from 甲"_qs);
    const auto key = [this](const QString& table) {
        return reads(u"select name from pragma_table_info('%1') where pk>0"_qs.arg(table));
    };
    EXPECT_EQ(key(u"甲"_qs), QStringList{u"ID"_qs});
    EXPECT_EQ(key(u"乙"_qs), QStringList{u"rowid"_qs});
    EXPECT_EQ(key(u"丙"_qs), QStringList{u"rowid"_qs});
}

TEST_F(AnySqliteTool, SeesNoPrimaryKeyInANumberThatIsUniqueOnlyTogetherWithAnotherField) {
    TableDef table = outlineTable(u"甲"_qs);
    table.Indexes = {TableDef::CreateIndex(u"两者"_qs, false, true, {u"ID"_qs, u"Key"_qs})};
    db_->TableDefs().Append(table);
    EXPECT_EQ(reads(u"select name from pragma_table_info('甲') where pk>0"_qs),
              QStringList{u"rowid"_qs});
    EXPECT_EQ(reads(u"select name from sqlite_schema where type='index' and sql is not null"_qs),
              QStringList{u"甲.两者"_qs});
}

TEST_F(AnySqliteTool, SeesNoPrimaryKeyInANumberThatIsNotUnique) {
    TableDef table = outlineTable(u"甲"_qs);
    table.Indexes = {TableDef::CreateIndex(u"号"_qs, false, false, {u"ID"_qs}),
                     TableDef::CreateIndex(u"名"_qs, false, false, {u"Key"_qs})};
    db_->TableDefs().Append(table);
    EXPECT_EQ(reads(u"select name from pragma_table_info('甲') where pk>0"_qs),
              QStringList{u"rowid"_qs});
    EXPECT_EQ(reads(u"select name from sqlite_schema where type='index' and sql is not null"_qs),
              (QStringList{u"甲.号"_qs, u"甲.名"_qs}));
    addRows(*db_, u"甲"_qs, {u"Ä"_qs, u"ä"_qs, u"Ä"_qs});
    EXPECT_EQ(reads(u"select count(*) from 甲"_qs), QStringList{u"3"_qs});
}

TEST_F(AnySqliteTool, SeesAnIndexUnderItsTableAndItsName) {
    TableDef table = outlineTable(u"甲"_qs);
    table.Indexes.push_back(TableDef::CreateIndex(u"primarykey"_qs, false, false, {u"名称"_qs}));
    db_->TableDefs().Append(table);
    db_->TableDefs().Append(outlineTable(u"乙"_qs));
    EXPECT_EQ(reads(u"select name from sqlite_schema where type='index' and sql is not null"_qs),
              (QStringList{u"甲.PrimaryKey"_qs, u"甲.primarykey.2"_qs, u"乙.PrimaryKey"_qs}));
    EXPECT_EQ(db_->TableDefs()[u"甲"_qs], table);
}

TEST_F(AnySqliteTool, SeesTheLastNumberThatEachTableHasGiven) {
    db_->TableDefs().Append(outlineTable(u"甲"_qs));
    db_->TableDefs().Append(texts(u"乙"_qs, {u"Key"_qs, u"名称"_qs, u"是否文档"_qs}));
    addRows(*db_, u"甲"_qs, {u"甲"_qs, u"甲.1"_qs});
    addRows(*db_, u"乙"_qs, {u"乙"_qs, u"乙.1"_qs});
    EXPECT_EQ(reads(u"select name,last_number from jet_tables order by id"_qs),
              (QStringList{u"甲|2"_qs, u"乙|0"_qs}));
}

TEST_F(AnySqliteTool, FindsNothingLeftOfATableThatWasDropped) {
    db_->TableDefs().Append(outlineTable(u"甲"_qs));
    db_->TableDefs().Append(outlineTable(u"乙"_qs));
    db_->Execute(u"DROP TABLE 甲"_qs);
    for (const QString& list : {u"jet_fields"_qs, u"jet_indexes"_qs, u"jet_index_fields"_qs}) {
        EXPECT_EQ(reads(u"select distinct table_id from "_qs + list), QStringList{u"2"_qs})
            << list.toStdString();
    }
    EXPECT_EQ(reads(u"select id,name from jet_tables"_qs), QStringList{u"2|乙"_qs});
    EXPECT_EQ(tables(), QStringList{u"乙"_qs});
}

TEST_F(AnySqliteTool, SeesTheLocaleThatTheDatabaseWasMadeWith) {
    EXPECT_EQ(reads(u"select value from jet_info where name='locale'"_qs),
              QStringList{QString::fromUtf16(dbLangGeneral)});
}

TEST_F(AnySqliteTool, TakesNoNameInDoubleQuotesForATextAtOurConnection) {
    Connection connection(pathOf(u"a.mdb"_qs), Connection::Mode::existing);
    EXPECT_EQ(errorOf([&] { connection.Run("SELECT 'text'"); }), 0);
    EXPECT_NE(errorOf([&] { connection.Run("SELECT \"text\""); }), 0);
    EXPECT_NE(errorOf([&] { connection.Run("CREATE TABLE x(a CHECK(a<>\"text\"))"); }), 0);
}

// The file's own indexes know the case of ASCII letters alone.
class LettersBeyondAscii : public test::JetStore {
protected:
    LettersBeyondAscii() : db_(create(u"a.mdb"_qs)) {
        db_->TableDefs().Append(outlineTable(u"Ａ栋"_qs));
        addRows(*db_, u"Ａ栋"_qs, {u"Ａ栋.1"_qs, u"Ａ栋.2"_qs});
    }
    QStringList found(const QString& condition) {
        return rowsOf(*db_, u"select Key from Ａ栋 where "_qs + condition);
    }

    std::unique_ptr<Database> db_;
};

TEST_F(LettersBeyondAscii, AreFoundWhateverTheirCase) {
    EXPECT_EQ(found(u"Key='ａ栋.1'"_qs), QStringList{u"Ａ栋.1"_qs});
    EXPECT_EQ(found(u"'ａ栋.2'=Key"_qs), QStringList{u"Ａ栋.2"_qs});
    EXPECT_EQ(found(u"Key='A栋.1'"_qs), QStringList());
    EXPECT_EQ(found(u"Key<>'ａ栋.1'"_qs), QStringList{u"Ａ栋.2"_qs});
}

TEST_F(LettersBeyondAscii, AreOneValueInAUniqueIndexWhateverTheirCase) {
    EXPECT_EQ(errorOf([&] { addRows(*db_, u"Ａ栋"_qs, {u"ａ栋.1"_qs}); }), 3022);
    const auto rows = db_->OpenRecordset(u"select * from Ａ栋 order by ID"_qs);
    rows->Edit();
    rows->Set(u"Key", u"ａ栋.2"_qs);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    rows->Set(u"Key", u"ａ栋.1"_qs);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 0);
    EXPECT_EQ(found(u"ID=1"_qs), QStringList{u"ａ栋.1"_qs});
}

TEST_F(LettersBeyondAscii, AreNoSecondValueWhenTheirOwnRowIsEdited) {
    const auto row = db_->OpenRecordset(u"Select * from Ａ栋 where Key='Ａ栋.1'"_qs);
    row->Edit();
    row->Set(u"Key", u"ａ栋.1"_qs);
    EXPECT_EQ(errorOf([&] { row->Update(); }), 0);
    row->Edit();
    row->Set(u"Key", u"ａ栋.2"_qs);
    EXPECT_EQ(errorOf([&] { row->Update(); }), 3022);
}

TEST_F(LettersBeyondAscii, AreOneValueWhenRowsAreCopiedToo) {
    db_->TableDefs().Append(outlineTable(u"乙"_qs));
    addRows(*db_, u"乙"_qs, {u"乙"_qs, u"ａ栋.2"_qs});
    db_->Execute(u"select Key, 名称 into 丙 from 乙"_qs);
    EXPECT_EQ(errorOf([&] { db_->Execute(u"insert into Ａ栋 select * from 丙"_qs); }), 3022);
    EXPECT_EQ(found(u"ID>0"_qs).size(), 2);
}

TEST_F(LettersBeyondAscii, ATextWithMoreSpellingsThanCanBeNamedIsComparedAllTheSame) {
    const QString wide = u"ＡＢＣＤＥＦＧＨ"_qs;
    addRows(*db_, u"Ａ栋"_qs, {wide});
    EXPECT_EQ(errorOf([&] { addRows(*db_, u"Ａ栋"_qs, {wide.toLower()}); }), 3022);
    EXPECT_EQ(found(u"Key='"_qs + wide.toLower() + u"'"_qs), QStringList{wide});
}

TEST_F(LettersBeyondAscii, InAnIndexWithARowsNumberCountWithItWhenRowsAreCopied) {
    TableDef table = outlineTable(u"双"_qs);
    table.Indexes = {TableDef::CreateIndex(u"both"_qs, false, true, {u"Key"_qs, u"ID"_qs})};
    db_->TableDefs().Append(table);
    const auto copying = [&](const QString& id) {
        return errorOf(
            [&] { db_->Execute(u"insert into 双 select Key,ID from Ａ栋 where ID="_qs + id); });
    };
    EXPECT_EQ(copying(u"1"_qs), 0);
    const auto rows = db_->OpenRecordset(u"select * from Ａ栋 order by ID"_qs);
    rows->Edit();
    rows->Set(u"Key", u"ａ栋.1"_qs);
    rows->Update();
    EXPECT_EQ(copying(u"1"_qs), 3022);
    EXPECT_EQ(copying(u"2"_qs), 0);
}

TEST_F(LettersBeyondAscii, InAnIndexOfSeveralFieldsCountWithTheOthers) {
    TableDef table(u"双"_qs);
    table.Fields = {TableDef::CreateField(u"a"_qs, FieldType::Text),
                    TableDef::CreateField(u"n"_qs, FieldType::Long)};
    table.Indexes = {TableDef::CreateIndex(u"both"_qs, false, true, {u"a"_qs, u"n"_qs})};
    db_->TableDefs().Append(table);
    const auto adding = [&](const QString& text, const Value& number) {
        return errorOf([&] {
            const auto rows = db_->OpenRecordset(u"双"_qs);
            rows->AddNew();
            rows->Set(u"a", text);
            rows->Set(u"n", number);
            rows->Update();
        });
    };
    EXPECT_EQ(adding(u"Ä"_qs, 1), 0);
    EXPECT_EQ(adding(u"ä"_qs, 2), 0);
    EXPECT_EQ(adding(u"ä"_qs, 1), 3022);
    EXPECT_EQ(adding(u"ä"_qs, Value()), 0);
    EXPECT_EQ(adding(u"ä"_qs, Value()), 0); // Null equals nothing
}

} // namespace qvnd::jet
