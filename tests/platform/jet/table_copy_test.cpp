#include "support/JetStore.h"

#include <vector>

namespace qvnd::jet {

using test::errorOf;

// Two databases, the outline T of three rows in the first.
class TableCopies : public test::JetStore {
protected:
    TableCopies() : a_(create(u"a.mdb"_qs)), b_(create(u"b.mdb"_qs)) {
        a_->TableDefs().Append(outlineTable(u"T"_qs));
        addRows(*a_, u"T"_qs, {u"T"_qs, u"T.1"_qs, u"T.2"_qs});
    }

    QString into(const QString& file) const {
        return u"SELECT * INTO [T] IN '"_qs + file + u"' FROM [T]"_qs;
    }

    std::unique_ptr<Database> a_;
    std::unique_ptr<Database> b_;
};

TEST_F(TableCopies, SelectIntoMakesTheTableInTheOtherFileWithEveryRowAndItsNumber) {
    a_->Execute(into(b_->Name()));
    EXPECT_EQ(rowsOf(*b_, u"select * from T"_qs), rowsOf(*a_, u"select * from T"_qs));
}

TEST_F(TableCopies, SelectIntoKeepsTypesAndAutoIncrementButNoIndex) {
    a_->Execute(into(b_->Name()));
    const TableDef made = b_->TableDefs()[u"T"_qs];
    EXPECT_EQ(made.Fields, a_->TableDefs()[u"T"_qs].Fields);
    EXPECT_TRUE(made.Indexes.empty());
    addRows(*b_, u"T"_qs, {u"T.3"_qs});
    EXPECT_EQ(rowsOf(*b_, u"select ID from T where Key='T.3'"_qs), QStringList{u"4"_qs});
}

TEST_F(TableCopies, SelectIntoATableThatExistsIs3010AndLeavesItAsItIs) {
    b_->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*b_, u"T"_qs, {u"old"_qs});
    EXPECT_EQ(errorOf([&] { a_->Execute(into(b_->Name())); }), 3010);
    EXPECT_EQ(rowsOf(*b_, u"select Key from T"_qs), QStringList{u"old"_qs});
}

TEST_F(TableCopies, SelectIntoInTheSameFileTakesTheRowsOfItsCondition) {
    a_->Execute(u"Select * into  temp  from T where ID > 1"_qs);
    EXPECT_EQ(rowsOf(*a_, u"select Key,ID from temp"_qs), (QStringList{u"T.1|2"_qs, u"T.2|3"_qs}));
    EXPECT_EQ(errorOf([&] { a_->Execute(u"Select * into temp from T"_qs); }), 3010);
}

TEST_F(TableCopies, SelectIntoWithFieldsMakesThoseAlone) {
    a_->Execute(u"Select Key,名称 into x from T order by ID desc"_qs);
    EXPECT_EQ(rowsOf(*a_, u"select * from x"_qs),
              (QStringList{u"T.2|T.2"_qs, u"T.1|T.1"_qs, u"T|T"_qs}));
}

TEST_F(TableCopies, SelectIntoGoesToAFileThatNobodyHoldsOpenAndLeavesItComplete) {
    const QString file = b_->Name();
    b_->Close();
    a_->Execute(into(file));
    EXPECT_FALSE(QFile::exists(file + u"-journal"_qs));
    const auto again = open(u"b.mdb"_qs);
    EXPECT_EQ(rowsOf(*again, u"select Key from T"_qs).size(), 3);
}

TEST_F(TableCopies, AMissingFileBehindInIs3024AndAMissingFolder3044) {
    EXPECT_EQ(errorOf([&] { a_->Execute(into(pathOf(u"none.mdb"_qs))); }), 3024);
    EXPECT_EQ(errorOf([&] { a_->Execute(into(pathOf(u"no/none.mdb"_qs))); }), 3044);
}

TEST_F(TableCopies, AFileWithApostrophesIsFoundWhetherTheyAreDoubledOrNot) {
    QDir(folder_.path()).mkdir(u"O'Brien's"_qs);
    const auto c = create(u"O'Brien's/c.mdb"_qs);
    a_->Execute(into(c->Name()));
    EXPECT_EQ(rowsOf(*c, u"select Key from T"_qs).size(), 3);
    c->Execute(u"DROP TABLE T"_qs);
    a_->Execute(into(QString(c->Name()).replace(u"'"_qs, u"''"_qs)));
    EXPECT_EQ(rowsOf(*c, u"select Key from T"_qs).size(), 3);
}

TEST_F(TableCopies, AFileWithTwoApostrophesInARowIsFoundToo) {
    QDir(folder_.path()).mkdir(u"a''b"_qs);
    const auto c = create(u"a''b/c.mdb"_qs);
    a_->Execute(into(c->Name()));
    EXPECT_EQ(rowsOf(*c, u"select Key from T"_qs).size(), 3);
}

TEST_F(TableCopies, AFileWhoseNameEndsInAnApostropheOrHasAWordLikeFromInItIsFound) {
    for (const QString& name : {u"c'"_qs, u"c' FROMx"_qs, u"c' fromage' x"_qs}) {
        const auto c = create(name);
        a_->Execute(into(c->Name()));
        EXPECT_EQ(rowsOf(*c, u"select Key from T"_qs).size(), 3) << name.toStdString();
    }
}

TEST_F(TableCopies, TheNameOfAFileMayStandInEitherQuotesAndTheQueryRightBehindIt) {
    a_->Execute(u"SELECT * INTO [T] IN \""_qs + b_->Name() + u"\" FROM [T]"_qs);
    a_->Execute(u"SELECT * INTO [U] IN '"_qs + b_->Name() + u"'FROM [T]"_qs);
    EXPECT_EQ(b_->TableDefs().Names(), (QStringList{u"T"_qs, u"U"_qs}));
}

TEST_F(TableCopies, AMissingSourceIsToldBeforeAMissingTarget) {
    EXPECT_EQ(errorOf([&] { a_->Execute(u"INSERT INTO x SELECT * FROM y"_qs); }), 3078);
    EXPECT_EQ(errorOf([&] {
                  a_->Execute(u"INSERT INTO x IN '"_qs + pathOf(u"none.mdb"_qs) +
                              u"' SELECT * FROM y"_qs);
              }),
              3078);
}

TEST_F(TableCopies, InsertIntoAppendsTheRowsWithTheirNumbers) {
    b_->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*b_, u"T"_qs, {u"old"_qs});
    b_->Execute(u"DELETE * FROM T"_qs);
    a_->Execute(u"INSERT INTO T IN '"_qs + b_->Name() + u"' SELECT * FROM T"_qs);
    EXPECT_EQ(rowsOf(*b_, u"select Key,ID from T"_qs),
              (QStringList{u"T|1"_qs, u"T.1|2"_qs, u"T.2|3"_qs}));
}

TEST_F(TableCopies, TheNameOfAFileEndsBeforeTheQueryThatHasTextsOfItsOwn) {
    b_->TableDefs().Append(outlineTable(u"T"_qs));
    a_->Execute(u"INSERT INTO T IN '"_qs + b_->Name() + u"' SELECT * FROM T WHERE Key='T.1'"_qs);
    EXPECT_EQ(rowsOf(*b_, u"select Key from T"_qs), QStringList{u"T.1"_qs});
    a_->Execute(u"SELECT * INTO U IN '"_qs + b_->Name() + u"' FROM T WHERE Key='T.2'"_qs);
    EXPECT_EQ(rowsOf(*b_, u"select Key from U"_qs), QStringList{u"T.2"_qs});
}

TEST_F(TableCopies, NumberingGoesOnBehindTheHighestNumberInserted) {
    b_->TableDefs().Append(outlineTable(u"T"_qs));
    a_->Execute(u"INSERT INTO T IN '"_qs + b_->Name() + u"' SELECT * FROM T"_qs);
    addRows(*b_, u"T"_qs, {u"T.9"_qs});
    EXPECT_EQ(rowsOf(*b_, u"select ID from T where Key='T.9'"_qs), QStringList{u"4"_qs});
}

TEST_F(TableCopies, InsertIntoTakesTheRowsOfItsCondition) {
    a_->Execute(u"Select * into temp from T where ID > 99"_qs);
    a_->Execute(u"Insert Into temp Select * From T Where [id] >= 2"_qs);
    a_->Execute(u"Insert Into temp Select * From T Where instr(key,'T') > 0 and ID=1"_qs);
    EXPECT_EQ(rowsOf(*a_, u"select Key from temp"_qs),
              (QStringList{u"T.1"_qs, u"T.2"_qs, u"T"_qs}));
}

TEST_F(TableCopies, ARowTwiceInAUniqueIndexIs3022AndNoRowComesIn) {
    b_->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*b_, u"T"_qs, {u"x"_qs, u"y"_qs, u"t.2"_qs});
    b_->Execute(u"DELETE * FROM T where ID < 3"_qs);
    EXPECT_EQ(errorOf([&] {
                  a_->Execute(u"INSERT INTO T IN '"_qs + b_->Name() + u"' SELECT * FROM T"_qs);
              }),
              3022);
    EXPECT_EQ(rowsOf(*b_, u"select Key from T"_qs), QStringList{u"t.2"_qs});
}

TEST_F(TableCopies, NumbersOfRowsThatDidNotComeInAreStillFree) {
    b_->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*b_, u"T"_qs, {u"t.2"_qs});
    EXPECT_EQ(errorOf([&] {
                  a_->Execute(u"INSERT INTO T IN '"_qs + b_->Name() + u"' SELECT Key FROM T"_qs);
              }),
              3022);
    addRows(*b_, u"T"_qs, {u"z"_qs});
    EXPECT_EQ(rowsOf(*b_, u"select Key,ID from T"_qs), (QStringList{u"t.2|1"_qs, u"z|2"_qs}));
}

TEST_F(TableCopies, InsertIntoAMissingTableIs3192) {
    EXPECT_EQ(errorOf([&] { a_->Execute(u"INSERT INTO x SELECT * FROM T"_qs); }), 3192);
}

TEST_F(TableCopies, InsertIntoGoesByTheNamesOfTheFields) {
    TableDef other(u"x"_qs);
    other.Fields = {TableDef::CreateField(u"备注"_qs, FieldType::Text),
                    TableDef::CreateField(u"ID"_qs, FieldType::Text),
                    TableDef::CreateField(u"KEY"_qs, FieldType::Memo)};
    other.Fields[0].DefaultValue = u"无"_qs;
    a_->TableDefs().Append(other);
    a_->Execute(u"INSERT INTO x SELECT Key,ID FROM T where ID=2"_qs);
    EXPECT_EQ(rowsOf(*a_, u"select * from x"_qs), QStringList{u"无|2|T.1"_qs});
    EXPECT_EQ(errorOf([&] { a_->Execute(u"INSERT INTO x SELECT * FROM T"_qs); }), 3127);
}

TEST_F(TableCopies, ValuesBecomeWhatTheFieldsOfTheTargetTake) {
    const auto make = [&](const QString& name, const std::vector<FieldType>& types) {
        TableDef table(name);
        for (const FieldType type : types) {
            const QString field = u"abcd"_qs.mid(static_cast<qsizetype>(table.Fields.size()), 1);
            table.Fields.push_back(TableDef::CreateField(field, type));
        }
        a_->TableDefs().Append(table);
    };
    make(u"von"_qs, {FieldType::Double, FieldType::Date, FieldType::Text, FieldType::Long});
    make(u"nach"_qs, {FieldType::Long, FieldType::Text, FieldType::Double, FieldType::Byte});
    const auto rows = a_->OpenRecordset(u"von"_qs);
    rows->AddNew();
    rows->Set(u"a", 3.5);
    rows->Set(u"b", QDate(2001, 8, 31));
    rows->Set(u"c", u"1,250"_qs);
    rows->Set(u"d", 255);
    rows->Update();
    const QString insert = u"INSERT INTO nach SELECT * FROM von"_qs;
    a_->Execute(insert);
    EXPECT_EQ(rowsOf(*a_, u"select * from nach"_qs), QStringList{u"4|2001-8-31|1250|255"_qs});
    rows->MoveLast();
    rows->Edit();
    rows->Set(u"d", 256);
    rows->Update();
    EXPECT_EQ(errorOf([&] { a_->Execute(insert); }), 3421);
    EXPECT_EQ(rowsOf(*a_, u"select * from nach"_qs).size(), 1);
}

TEST_F(TableCopies, ATextThatTheTargetRefusesStopsTheInsertWhole) {
    TableDef narrow(u"x"_qs);
    narrow.Fields = {TableDef::CreateField(u"Key"_qs, FieldType::Text, 2)};
    a_->TableDefs().Append(narrow);
    EXPECT_EQ(errorOf([&] { a_->Execute(u"INSERT INTO x SELECT Key FROM T"_qs); }), 3163);
    EXPECT_TRUE(rowsOf(*a_, u"select * from x"_qs).isEmpty());
    TableDef strict(u"y"_qs);
    strict.Fields = {TableDef::CreateField(u"名称"_qs, FieldType::Memo)};
    a_->TableDefs().Append(strict);
    const auto rows = a_->OpenRecordset(u"T"_qs);
    rows->Edit();
    rows->Set(u"名称", u""_qs);
    rows->Update();
    EXPECT_EQ(errorOf([&] { a_->Execute(u"INSERT INTO y SELECT 名称 FROM T"_qs); }), 3315);
}

TEST_F(TableCopies, ATextMayFillANarrowerFieldThatIsElseTheSameAndNotExceedIt) {
    for (const int size : {3, 2}) { // the longest key is T.1
        TableDef narrow(u"x%1"_qs.arg(size));
        narrow.Fields = {TableDef::CreateField(u"Key"_qs, FieldType::Text, size)};
        narrow.Fields[0].AllowZeroLength = true;
        a_->TableDefs().Append(narrow);
        const QString insert = u"INSERT INTO "_qs + narrow.Name + u" SELECT Key FROM T"_qs;
        EXPECT_EQ(errorOf([&] { a_->Execute(insert); }), size == 3 ? 0 : 3163);
        EXPECT_EQ(rowsOf(*a_, u"select * from "_qs + narrow.Name).size(), size == 3 ? 3 : 0);
    }
}

TEST_F(TableCopies, ATableMayBeAppendedToItself) {
    a_->Execute(u"Select Key,名称 into x from T"_qs);
    a_->Execute(u"INSERT INTO x SELECT * FROM x"_qs);
    EXPECT_EQ(rowsOf(*a_, u"select Key from x"_qs),
              (QStringList{u"T"_qs, u"T.1"_qs, u"T.2"_qs, u"T"_qs, u"T.1"_qs, u"T.2"_qs}));
}

TEST_F(TableCopies, ANameOutOfBoundsIs3125) {
    EXPECT_EQ(errorOf([&] { a_->Execute(u"SELECT * INTO [a.b] FROM T"_qs); }), 3125);
    const QString longest(64, u'甲');
    EXPECT_EQ(errorOf([&] { a_->Execute(u"SELECT * INTO "_qs + longest + u" FROM T"_qs); }), 0);
    EXPECT_EQ(errorOf([&] { a_->Execute(u"SELECT * INTO "_qs + longest + u"乙 FROM T"_qs); }),
              3125);
}

TEST_F(TableCopies, EveryCharacterOfATextSurvivesTheCopy) {
    const QString odd = u"'\"\\%_*?#[]\r\n\t　𠀀é"_qs + QChar(0) + u"尾"_qs;
    const auto rows = a_->OpenRecordset(u"T"_qs);
    rows->Edit();
    rows->Set(u"名称", odd);
    rows->Update();
    a_->Execute(into(b_->Name()));
    EXPECT_EQ(b_->OpenRecordset(u"select 名称 from T"_qs)->Get(u"名称").ToText(), odd);
}

} // namespace qvnd::jet
