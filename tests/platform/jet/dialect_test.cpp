#include "platform/jet/dialect/ConditionSql.h"
#include "platform/jet/dialect/Parser.h"
#include "platform/jet/file/Catalogue.h"
#include "platform/jet/file/Connection.h"
#include "support/JetStore.h"

#include <utility>
#include <vector>

namespace qvnd::jet {

using test::errorOf;

// A database with the outline 工程甲 of five rows.
class Dialect : public test::JetStore {
protected:
    Dialect() : db_(create(u"a.mdb"_qs)) {
        db_->TableDefs().Append(outlineTable(u"工程甲"_qs));
        addRows(*db_, u"工程甲"_qs,
                {u"工程甲"_qs, u"工程甲.1"_qs, u"工程甲.1.1"_qs, u"工程甲.10"_qs, u"工程甲.2"_qs});
    }

    QStringList keys(const QString& tail) {
        return rowsOf(*db_, u"select Key from 工程甲 "_qs + tail);
    }
    int count(const QString& where) { return static_cast<int>(keys(u"where "_qs + where).size()); }
    long executing(const QString& statement) {
        return errorOf([&] { db_->Execute(statement); });
    }
    long opening(const QString& query) {
        return errorOf([&] { (void)db_->OpenRecordset(query); });
    }

    std::unique_ptr<Database> db_;
};

TEST_F(Dialect, KeywordsAndNamesHaveNoCase) {
    EXPECT_EQ(rowsOf(*db_, u"SElect * From 工程甲 WHERE key='工程甲' Order BY [id] ASC"_qs).size(),
              1);
    db_->TableDefs().Append(outlineTable(u"Plan"_qs));
    EXPECT_EQ(opening(u"select * from pLAN"_qs), 0);
}

TEST_F(Dialect, BlanksTabsAndLineEndsPartWords) {
    EXPECT_EQ(
        rowsOf(*db_, u"select\t* from\r\n工程甲\nwhere\tkey = '工程甲'\r\norder by id\n"_qs).size(),
        1);
}

TEST_F(Dialect, BehindTheDecimalPointOfANumberStandDigits) {
    EXPECT_EQ(count(u"ID = 2.0"_qs), 1);
    EXPECT_EQ(opening(u"select * from 工程甲 where ID = 2.x"_qs), error::syntaxError);
    EXPECT_EQ(opening(u"select * from 工程甲 where ID = 2."_qs), error::syntaxError);
}

TEST_F(Dialect, RowsComeInTheOrderOfTheirAdditionUnlessOrdered) {
    EXPECT_EQ(keys(u""_qs).first(), u"工程甲"_qs);
    EXPECT_EQ(keys(u"order by ID desc"_qs).first(), u"工程甲.2"_qs);
    EXPECT_EQ(keys(u"order by 是否文档, ID desc"_qs).first(), u"工程甲.2"_qs);
}

TEST_F(Dialect, TextIsComparedWithoutCase) {
    addRows(*db_, u"工程甲"_qs, {u"Abc"_qs});
    EXPECT_EQ(count(u"Key='aBC'"_qs), 1);
    EXPECT_EQ(count(u"Key<>'aBC'"_qs), 5);
}

// An outline has thousands of rows.
TEST_F(Dialect, ATextThatAFieldIsToHaveIsLookedUpInItsIndexOnWhicheverSideItStands) {
    Connection connection(db_->Name(), Connection::Mode::existing);
    const std::vector<StoredTable> tables = Catalogue::TablesIn(connection);
    const auto plan = [&](const QString& text) {
        const ConditionSql condition =
            translatedWhere(Parser(text).ParseCondition(), tables.front());
        Statement statement(connection, "EXPLAIN QUERY PLAN SELECT rowid FROM " +
                                            tables.front().TableName() + condition.Sql);
        condition.BindTo(statement);
        return statement.Step() ? statement.Text(3) : QString();
    };
    EXPECT_TRUE(plan(u"Key='工程甲.1'"_qs).startsWith(u"SEARCH"_qs));
    EXPECT_TRUE(plan(u"'工程甲.1'=Key"_qs).startsWith(u"SEARCH"_qs));
    EXPECT_FALSE(plan(u"名称='工程甲.1'"_qs).startsWith(u"SEARCH"_qs)) << "which has no index";
}

TEST_F(Dialect, TextIsComparedBeyondANulCharacter) {
    const QString first = u"a"_qs + QChar(0) + u"b"_qs;
    const QString other = u"a"_qs + QChar(0) + u"c"_qs;
    addRows(*db_, u"工程甲"_qs, {first});
    EXPECT_EQ(count(u"Key='"_qs + first + u'\''), 1);
    EXPECT_EQ(count(u"Key='"_qs + other + u'\''), 0);
}

TEST_F(Dialect, NumbersAreComparedBySize) {
    EXPECT_EQ(count(u"ID > 3"_qs), 2);
    EXPECT_EQ(count(u"ID >= 3"_qs), 3);
    EXPECT_EQ(count(u"ID < 2"_qs), 1);
    EXPECT_EQ(count(u"ID <= 2"_qs), 2);
    EXPECT_EQ(count(u"ID = 2"_qs), 1);
    EXPECT_EQ(count(u"ID <> 2"_qs), 4);
    EXPECT_EQ(count(u"ID > -1"_qs), 5);
    EXPECT_EQ(count(u"ID > 2.5"_qs), 3);
    EXPECT_EQ(count(u"ID < 2.5"_qs), 2);
}

TEST_F(Dialect, LikeWithAStarCountsEveryKeyThatBeginsAlike) {
    EXPECT_EQ(count(u"Key like '工程甲.1*'"_qs), 3);
    EXPECT_EQ(count(u"Key Like '工程甲*'"_qs), 5);
    EXPECT_EQ(count(u"Key not like '工程甲.1*'"_qs), 2);
}

TEST_F(Dialect, APatternMayStandInAField) {
    EXPECT_EQ(count(u"Key like 名称"_qs), 5);
    EXPECT_EQ(count(u"Key like 是否文档"_qs), 0);
}

TEST_F(Dialect, InstrTellsWhereATextStands) {
    EXPECT_EQ(count(u"instr(key,'工程甲.1.') > 0"_qs), 1);
    EXPECT_EQ(count(u"InStr(key,'.') = 4"_qs), 4);
}

TEST_F(Dialect, AndBindsTighterThanOrAndParenthesesTighterStill) {
    EXPECT_EQ(count(u"ID=1 or ID=2 and ID=3"_qs), 1);
    EXPECT_EQ(count(u"(ID=1 or ID=2) and ID=2"_qs), 1);
    EXPECT_EQ(count(u"not ID=1"_qs), 4);
    EXPECT_EQ(count(u"名称='工程甲' and 是否文档='否'"_qs), 1);
}

TEST_F(Dialect, NullIsFoundByIsNullAlone) {
    TableDef table(u"N"_qs);
    table.Fields = {TableDef::CreateField(u"a"_qs, FieldType::Text),
                    TableDef::CreateField(u"b"_qs, FieldType::Text)};
    db_->TableDefs().Append(table);
    const auto rows = db_->OpenRecordset(u"N"_qs);
    rows->AddNew();
    rows->Set(u"b", u"x"_qs);
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"select b from N where a is null"_qs).size(), 1);
    EXPECT_EQ(rowsOf(*db_, u"select b from N where b is not null"_qs).size(), 1);
    EXPECT_EQ(rowsOf(*db_, u"select b from N where a = null"_qs).size(), 0);
    EXPECT_EQ(rowsOf(*db_, u"select b from N where null = b"_qs).size(), 0);
    EXPECT_EQ(rowsOf(*db_, u"select b from N where a <> 'x'"_qs).size(), 0);
    EXPECT_EQ(rowsOf(*db_, u"select b from N where a like '*'"_qs).size(), 0);
    EXPECT_EQ(rowsOf(*db_, u"select b from N where instr(b,a) > 0"_qs).size(), 0);
    EXPECT_EQ(rowsOf(*db_, u"select b from N where instr(a,b) = 0"_qs).size(), 0);
}

TEST_F(Dialect, FieldsMayBearTheTablesNameAndASemicolonMayEndTheStatement) {
    EXPECT_EQ(rowsOf(*db_, u"select [工程甲].[Key] from 工程甲 where 工程甲.ID=1;"_qs),
              QStringList{u"工程甲"_qs});
}

TEST_F(Dialect, QuotesInATextAreDoubledOrTheTextIsInTheOtherQuotes) {
    addRows(*db_, u"工程甲"_qs, {u"O'Brien"_qs});
    EXPECT_EQ(count(u"Key='O''Brien'"_qs), 1);
    EXPECT_EQ(count(u"Key=\"O'Brien\""_qs), 1);
}

TEST_F(Dialect, AnApostropheInAValueBreaksTheStatement) {
    EXPECT_EQ(opening(u"select * from 工程甲 where Key='O'Brien'"_qs), 3075);
    EXPECT_EQ(executing(u"Delete * from 工程甲 where Key='O'Brien'"_qs), 3075);
}

TEST_F(Dialect, ABareNameIsLettersDigitsUnderscoresAndAnythingBeyondAscii) {
    for (const QString& name : {u"plan_1"_qs, u"2001工程"_qs, u"123"_qs, u"AZaz09"_qs,
                                u"工程（一）"_qs, u"全　角"_qs, u"𠀀"_qs, u"a\u0080"_qs}) {
        db_->TableDefs().Append(outlineTable(name));
        EXPECT_EQ(opening(u"select * from "_qs + name), 0) << name.toStdString();
        EXPECT_EQ(executing(u"DROP TABLE "_qs + name), 0) << name.toStdString();
    }
}

TEST_F(Dialect, AnyOtherNameNeedsBrackets) {
    for (const QString& name :
         {u"a-b"_qs, u"甲(乙)"_qs, u"a&b"_qs, u"a'b"_qs, u"#1"_qs, u"a;b"_qs, u"x--y"_qs}) {
        db_->TableDefs().Append(outlineTable(name));
        EXPECT_EQ(opening(u"select * from "_qs + name), 3075) << name.toStdString();
        EXPECT_EQ(opening(u"select * from ["_qs + name + u"]"_qs), 0) << name.toStdString();
        EXPECT_EQ(executing(u"DROP TABLE "_qs + name), 3075) << name.toStdString();
    }
}

TEST_F(Dialect, AReservedWordIsANameOnlyInBrackets) {
    db_->TableDefs().Append(outlineTable(u"Order"_qs));
    EXPECT_EQ(opening(u"select * from Order"_qs), 3075);
    EXPECT_EQ(opening(u"select * from [Order]"_qs), 0);
}

TEST_F(Dialect, ABareNameWithABlankReadsAsATableWithASecondNameAndIsNotFound) {
    db_->TableDefs().Append(outlineTable(u"甲 乙"_qs));
    EXPECT_EQ(opening(u"Select * from 甲 乙 order by ID asc"_qs), 3078);
    EXPECT_EQ(executing(u"SELECT * INTO 甲 乙 FROM 甲 乙"_qs), 3075);
    EXPECT_EQ(executing(u"DROP TABLE 甲 乙"_qs), 3075);
}

TEST_F(Dialect, NamesThatMeanSomethingToSqliteAreNamesLikeAnyOther) {
    for (const QString& name : {u"sqlite_master"_qs, u"jet_tables"_qs, u"t1"_qs, u"rowid"_qs}) {
        db_->TableDefs().Append(outlineTable(name));
        addRows(*db_, name, {u"k"_qs});
        EXPECT_EQ(rowsOf(*db_, u"select Key from "_qs + name), QStringList{u"k"_qs});
    }
    TableDef odd(u"odd"_qs);
    odd.Fields = {TableDef::CreateField(u"rid"_qs, FieldType::Text),
                  TableDef::CreateField(u"a\"b'c"_qs, FieldType::Text)};
    db_->TableDefs().Append(odd);
    EXPECT_EQ(opening(u"select [a\"b'c] from odd where rid='x' order by rid"_qs), 0);
}

TEST_F(Dialect, ASyntaxErrorIs3075AndNothingHappens) {
    for (const QString& statement : {u""_qs,
                                     u"update 工程甲 set ID=1"_qs,
                                     u"Delete * 工程甲"_qs,
                                     u"Delete * from"_qs,
                                     u"Delete * from 工程甲 where"_qs,
                                     u"Delete * from 工程甲 where ID >"_qs,
                                     u"Delete * from 工程甲 where (ID=1"_qs,
                                     u"Delete * from 工程甲 where ID=1 ID=2"_qs,
                                     u"Delete * from [工程甲"_qs,
                                     u"DROP 工程甲"_qs,
                                     u"SELECT * INTO x"_qs,
                                     u"INSERT INTO x"_qs,
                                     u"Delete * from 工程甲; drop table 工程甲"_qs,
                                     u"Delete * from 工程甲 where Key like"_qs,
                                     u"Delete * from 工程甲 where ID is 1"_qs,
                                     u"SELECT * INTO x IN y FROM 工程甲"_qs,
                                     u"SELECT * INTO x IN 'y FROM 工程甲"_qs,
                                     u"SELECT * INTO x FROM 工程甲 )"_qs,
                                     u"INSERT INTO 工程甲 SELECT * FROM 工程甲 )"_qs,
                                     u"INSERT INTO 工程甲 SELECT * FROM 工程甲 where ID=9 ID"_qs,
                                     u"DROP TABLE 工程甲 )"_qs,
                                     u"Delete * from 工程甲;;"_qs}) {
        EXPECT_EQ(executing(statement), 3075) << statement.toStdString();
    }
    EXPECT_EQ(keys(u""_qs).size(), 5);
}

TEST_F(Dialect, ASyntaxErrorSaysInChineseWhatIsWrongWhere) {
    const std::vector<std::pair<QString, QString>> reasons{
        {u"Delete * from 工程甲 where ID >"_qs, u"此处应为字段名，语句已经结束"_qs},
        {u"Delete * 工程甲"_qs, u"此处应为FROM，却是“工程甲”"_qs},
        {u"Delete * from [工程甲"_qs, u"方括号没有闭合"_qs},
        {u"Delete * from 工程甲 where Key='x"_qs, u"引号没有闭合"_qs},
        {u"Delete * from 工程甲 where ID#1"_qs, u"不能使用字符“#”"_qs},
        {u"Delete * from 工程甲 x y"_qs, u"“y”在这里多余；名称中有空格或标点时须用方括号括起来"_qs},
        {u"SELECT * INTO x IN 'y FROM 工程甲"_qs, u"引号没有闭合"_qs},
        {u"SELECT * INTO x IN 'y'"_qs, u"此处应为FROM，语句已经结束"_qs},
        {u"SELECT * INTO x IN y FROM 工程甲"_qs, u"IN 之后应有用引号括起来的文件名"_qs},
        {u"SELECT * INTO x IN"_qs, u"IN 之后应有用引号括起来的文件名"_qs}};
    for (const auto& [statement, reason] : reasons) {
        try {
            db_->Execute(statement);
            ADD_FAILURE() << statement.toStdString();
        } catch (const RunTimeError& failure) {
            EXPECT_EQ(QString::fromStdU16String(failure.description()),
                      u"语句『"_qs + statement + u"』有语法错误："_qs + reason + u"。"_qs);
        }
    }
}

TEST_F(Dialect, AnEmptyNameInBracketsIsNoName) {
    EXPECT_EQ(opening(u"select * from []"_qs), 3075);
    EXPECT_EQ(opening(u"select [] from 工程甲"_qs), 3075);
    EXPECT_EQ(opening(u"select * from 工程甲 []"_qs), 3075);
}

TEST_F(Dialect, AnOrderIsOneOfTwo) {
    EXPECT_EQ(opening(u"select * from 工程甲 order by ID desc asc"_qs), 3075);
    EXPECT_EQ(opening(u"select * from 工程甲 order by ID asc desc"_qs), 3075);
    EXPECT_EQ(opening(u"select * from 工程甲 order by ID asc, Key desc"_qs), 0);
}

TEST_F(Dialect, AnEndlesslyNestedConditionIsRefused) {
    EXPECT_EQ(opening(u"select * from 工程甲 where "_qs + QString(100000, u'(')), 3075);
    EXPECT_EQ(opening(u"select * from 工程甲 where "_qs + u"not "_qs.repeated(100000) + u"ID=1"_qs),
              3075);
    EXPECT_EQ(opening(u"select * from 工程甲 where ID="_qs + u"- "_qs.repeated(100000) + u"1"_qs),
              3075);
}

// A comparison and its first side count as well.
TEST_F(Dialect, AConditionMayBeNestedFortyDeep) {
    EXPECT_EQ(count(u"not "_qs.repeated(38) + u"ID=1"_qs), 1);
    EXPECT_EQ(opening(u"select * from 工程甲 where "_qs + u"not "_qs.repeated(39) + u"ID=1"_qs),
              3075);
    EXPECT_EQ(count(u"ID=2 or (ID>0 and "_qs.repeated(9) + u"ID=1"_qs + u")"_qs.repeated(9)), 2);
}

TEST_F(Dialect, AConditionMayHaveFiveHundredTermsSideBySide) {
    const QString query = u"select * from 工程甲 where "_qs;
    EXPECT_EQ(count(u"ID=1"_qs + u" or ID=1"_qs.repeated(499)), 1);
    EXPECT_EQ(count(u"ID=1"_qs + u" and not (ID=- 2)"_qs.repeated(499)), 1);
    EXPECT_EQ(opening(query + u"ID=1"_qs + u" or ID=1"_qs.repeated(500)), 3075);
    EXPECT_EQ(opening(query + u"ID=1"_qs + u" and ID=1"_qs.repeated(100000)), 3075);
}

TEST_F(Dialect, AMissingTableIs3078) {
    EXPECT_EQ(opening(u"select * from 没有"_qs), 3078);
    EXPECT_EQ(errorOf([&] { (void)db_->OpenRecordset(u"没有"_qs); }), 3078);
    EXPECT_EQ(executing(u"Delete * from 没有"_qs), 3078);
    EXPECT_EQ(executing(u"select * into x from 没有"_qs), 3078);
    EXPECT_EQ(executing(u"insert into 工程甲 select * from 没有"_qs), 3078);
}

TEST_F(Dialect, AnUnknownFieldIs3061) {
    EXPECT_EQ(opening(u"select 没有 from 工程甲"_qs), 3061);
    EXPECT_EQ(opening(u"select * from 工程甲 where 没有='x'"_qs), 3061);
    EXPECT_EQ(opening(u"select * from 工程甲 order by 没有"_qs), 3061);
    EXPECT_EQ(executing(u"delete * from 工程甲 where 没有='x'"_qs), 3061);
    EXPECT_EQ(executing(u"select 没有 into x from 工程甲"_qs), 3061);
    EXPECT_EQ(executing(u"insert into 工程甲 select 没有 from 工程甲"_qs), 3061);
}

TEST_F(Dialect, AnUnknownFunctionIs3085) {
    EXPECT_EQ(opening(u"select * from 工程甲 where mid(Key,1)='x'"_qs), 3085);
    EXPECT_EQ(opening(u"select * from 工程甲 where instr(Key)>0"_qs), 3085);
    EXPECT_EQ(opening(u"select * from 工程甲 where instr()>0"_qs), 3085);
}

TEST_F(Dialect, TheNameOfAFunctionStandsWithoutBracketsAndWithoutATable) {
    EXPECT_EQ(opening(u"select * from 工程甲 where [instr](Key,'.')>0"_qs), 3075);
    EXPECT_EQ(opening(u"select * from 工程甲 where 工程甲.instr(Key,'.')>0"_qs), 3075);
    EXPECT_EQ(opening(u"select * from 工程甲 where where(Key,'.')>0"_qs), 3075);
}

TEST_F(Dialect, ComparingANumberWithATextIs3464) {
    EXPECT_EQ(opening(u"select * from 工程甲 where ID='1'"_qs), 3464);
    EXPECT_EQ(opening(u"select * from 工程甲 where Key=1"_qs), 3464);
    EXPECT_EQ(opening(u"select * from 工程甲 where Key"_qs), 3464);
    EXPECT_EQ(opening(u"select * from 工程甲 where -Key=1"_qs), 3464);
    EXPECT_EQ(opening(u"select * from 工程甲 where -Key='1'"_qs), 3464);
    EXPECT_EQ(opening(u"select * from 工程甲 where ID=-'1'"_qs), 3464);
    EXPECT_EQ(count(u"ID=-null"_qs), 0);
}

TEST_F(Dialect, ADateIsNoTruthAndNoText) {
    TableDef table(u"D"_qs);
    table.Fields = {TableDef::CreateField(u"日"_qs, FieldType::Date)};
    db_->TableDefs().Append(table);
    EXPECT_EQ(opening(u"select * from D where 日"_qs), 3464);
    EXPECT_EQ(opening(u"select * from D where not 日"_qs), 3464);
    EXPECT_EQ(opening(u"select * from D where 日='2001-8-31'"_qs), 3464);
    EXPECT_EQ(opening(u"select * from D where 日=日"_qs), 0);
}

TEST_F(Dialect, TextIsOrderedWithoutCase) {
    db_->TableDefs().Append(outlineTable(u"O"_qs));
    addRows(*db_, u"O"_qs, {u"b"_qs, u"C"_qs, u"Ä"_qs, u"a"_qs, u"ä.1"_qs});
    EXPECT_EQ(rowsOf(*db_, u"select Key from O order by Key"_qs),
              (QStringList{u"a"_qs, u"b"_qs, u"C"_qs, u"Ä"_qs, u"ä.1"_qs}));
    EXPECT_EQ(rowsOf(*db_, u"select Key from O order by Key desc"_qs).first(), u"ä.1"_qs);
}

TEST_F(Dialect, AQueryIsNoNameOfATable) {
    EXPECT_EQ(errorOf([&] { (void)db_->OpenRecordset(u"select * from 工程甲"_qs, OpenAs::Table); }),
              3078);
}

TEST_F(Dialect, AnOpenBracketInALikePatternIs93) {
    EXPECT_EQ(opening(u"select * from 工程甲 where Key like '工程[甲*'"_qs), 93);
}

TEST_F(Dialect, ExecutingAQueryIs3065AndOpeningAnythingElseIs3075) {
    EXPECT_EQ(executing(u"select * from 工程甲"_qs), 3065);
    EXPECT_EQ(opening(u"select * into x from 工程甲"_qs), 3075);
}

TEST_F(Dialect, DeleteTakesTheRowsOfItsConditionOrAll) {
    db_->Execute(u"Delete * from 工程甲 where Key like '工程甲.1*'"_qs);
    EXPECT_EQ(keys(u""_qs), (QStringList{u"工程甲"_qs, u"工程甲.2"_qs}));
    db_->Execute(u"Delete From 工程甲 Where [Key] = '工程甲.2'"_qs);
    EXPECT_EQ(keys(u""_qs), QStringList{u"工程甲"_qs});
    db_->Execute(u"DELETE * FROM 工程甲"_qs);
    EXPECT_TRUE(keys(u""_qs).isEmpty());
}

TEST_F(Dialect, DroppingAMissingTableIs3376) {
    EXPECT_EQ(executing(u"DROP TABLE temp"_qs), 3376);
    EXPECT_EQ(executing(u"DROP TABLE 工程甲"_qs), 0);
    EXPECT_EQ(executing(u"DROP TABLE 工程甲"_qs), 3376);
}

TEST_F(Dialect, ATableMayHaveASecondNameInEveryStatement) {
    EXPECT_EQ(rowsOf(*db_, u"select Key from 工程甲 as p where ID=1"_qs),
              QStringList{u"工程甲"_qs});
    EXPECT_EQ(rowsOf(*db_, u"select Key from 工程甲 [p q] where ID=1"_qs),
              QStringList{u"工程甲"_qs});
    EXPECT_EQ(executing(u"Delete * from 工程甲 p where ID=5"_qs), 0);
    EXPECT_EQ(executing(u"Delete * from 工程甲 as p where ID=4"_qs), 0);
    EXPECT_EQ(keys(u""_qs).size(), 3);
    EXPECT_EQ(executing(u"Delete * from 工程甲 as where ID=3"_qs), 3075);
    EXPECT_EQ(executing(u"Delete * from 工程甲 as"_qs), 3075);
    EXPECT_EQ(keys(u""_qs).size(), 3);
}

TEST_F(Dialect, ASearchIsOneConditionAndNothingBehindIt) {
    const auto rows = db_->OpenRecordset(u"select * from 工程甲"_qs);
    for (const QString& condition : {u"ID=1 ID"_qs, u"ID=1)"_qs, u"ID=1 order by ID"_qs}) {
        EXPECT_EQ(errorOf([&] { rows->FindFirst(condition); }), 3075) << condition.toStdString();
    }
    rows->FindFirst(u"ID=2;"_qs);
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"工程甲.1"_qs);
}

} // namespace qvnd::jet
