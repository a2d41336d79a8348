#include "support/JetStore.h"

#include <functional>
#include <vector>

namespace qvnd::jet {

using test::errorOf;

class Recordsets : public test::JetStore {
protected:
    Recordsets() : db_(create(u"a.mdb"_qs)) { db_->TableDefs().Append(outlineTable(u"T"_qs)); }

    std::unique_ptr<Recordset> all() { return db_->OpenRecordset(u"Select * from T"_qs); }

    std::unique_ptr<Database> db_;
};

TEST_F(Recordsets, OneWithoutRowsIsAtBothEnds) {
    const auto rows = all();
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 0);
}

TEST_F(Recordsets, OneWithRowsOpensOnTheFirst) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs});
    const auto rows = all();
    EXPECT_FALSE(rows->Bof());
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"T"_qs);
}

TEST_F(Recordsets, RecordCountCountsTheRowsReached) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs, u"T.2"_qs, u"T.3"_qs});
    const auto rows = all();
    EXPECT_EQ(rows->RecordCount(), 1);
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->MoveFirst();
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 4);
}

TEST_F(Recordsets, RecordCountCountsAnAddedRowAtOnce) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs});
    const auto rows = all();
    rows->MoveLast();
    rows->AddNew();
    rows->Set(u"Key", u"T.9"_qs);
    rows->Update();
    EXPECT_EQ(rows->RecordCount(), 3);
}

TEST_F(Recordsets, OpenedAsATableCountsItsRowsAtOnce) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs, u"T.2"_qs});
    EXPECT_EQ(db_->OpenRecordset(u"T"_qs, OpenAs::Table)->RecordCount(), 3);
    EXPECT_EQ(db_->OpenRecordset(u"T"_qs)->RecordCount(), 3);
}

TEST_F(Recordsets, MovingPastTheLastRowIsTheEndAndFurtherIs3021) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
}

TEST_F(Recordsets, MovingWithoutRowsIs3021) {
    const auto rows = all();
    EXPECT_EQ(errorOf([&] { rows->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveLast(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
}

TEST_F(Recordsets, ReadingEditingAndDeletingWithoutACurrentRowIs3021) {
    const auto rows = all();
    EXPECT_EQ(errorOf([&] { (void)rows->Get(u"Key"); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3021);
}

TEST_F(Recordsets, AnUnknownFieldIs3265) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    EXPECT_EQ(errorOf([&] { (void)rows->Get(u"没有"); }), 3265);
    rows->Edit();
    EXPECT_EQ(errorOf([&] { rows->Set(u"没有", u"x"_qs); }), 3265);
}

TEST_F(Recordsets, AFieldThatTheQueryDoesNotShowIs3265) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = db_->OpenRecordset(u"Select 名称,Key from T"_qs);
    ASSERT_EQ(rows->Fields().size(), 2U);
    EXPECT_EQ(rows->Get(u"名称").ToText(), u"T"_qs);
    EXPECT_EQ(errorOf([&] { (void)rows->Get(u"ID"); }), 3265);
}

TEST_F(Recordsets, FieldNamesHaveNoCase) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    EXPECT_EQ(rows->Get(u"key").ToText(), u"T"_qs);
    EXPECT_EQ(rows->Get(u"KEY").ToText(), u"T"_qs);
}

TEST_F(Recordsets, SettingOrUpdatingOutsideAddNewAndEditIs3020) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    EXPECT_EQ(errorOf([&] { rows->Set(u"Key", u"x"_qs); }), 3020);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
}

TEST_F(Recordsets, AddedRowsStandAtTheEndAndDoNotBecomeCurrent) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs});
    const auto rows = all();
    rows->AddNew();
    rows->Set(u"Key", u"T.9"_qs);
    rows->Update();
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"T"_qs);
    rows->MoveLast();
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"T.9"_qs);
    EXPECT_EQ(rows->RecordCount(), 3);
}

TEST_F(Recordsets, ARowAddedToAQueryGoesToItsTableEvenOutsideTheCondition) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = db_->OpenRecordset(u"Select * from T where Key='T'"_qs);
    rows->AddNew();
    rows->Set(u"Key", u"U"_qs);
    rows->Update();
    rows->MoveLast();
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"U"_qs);
    EXPECT_EQ(rowsOf(*db_, u"Select Key from T"_qs), (QStringList{u"T"_qs, u"U"_qs}));
    rows->Requery();
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 1);
}

TEST_F(Recordsets, AtTheEndStaysAtTheEndWhenARowIsAdded) {
    const auto rows = all();
    rows->AddNew();
    rows->Set(u"Key", u"T"_qs);
    rows->Update();
    EXPECT_TRUE(rows->Eof());
    EXPECT_FALSE(rows->Bof());
    rows->MoveFirst();
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"T"_qs);
}

TEST_F(Recordsets, ANewRowStartsWithTheDefaultsAndNullElsewhere) {
    TableDef table(u"D"_qs);
    table.Fields = {TableDef::CreateField(u"空"_qs, FieldType::Text),
                    TableDef::CreateField(u"文"_qs, FieldType::Text),
                    TableDef::CreateField(u"数"_qs, FieldType::Long)};
    table.Fields[1].AllowZeroLength = true;
    table.Fields[1].DefaultValue = QString();
    table.Fields[2].DefaultValue = u"0"_qs;
    db_->TableDefs().Append(table);
    const auto rows = db_->OpenRecordset(u"D"_qs);
    rows->AddNew();
    EXPECT_EQ(rows->Get(u"数").ToLong(), 0);
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"Select * from D"_qs), QStringList{u"Null||0"_qs});
}

TEST_F(Recordsets, EditChangesOnlyWhatWasSet) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    rows->Edit();
    rows->Set(u"名称", u"新名"_qs);
    EXPECT_EQ(rows->Get(u"名称").ToText(), u"新名"_qs);
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"Select * from T"_qs), QStringList{u"新名|T|1|否"_qs});
}

TEST_F(Recordsets, AnEditThatSetsNothingLeavesTheRowAsItIs) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    rows->Edit();
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"Select * from T"_qs), QStringList{u"T|T|1|否"_qs});
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
}

TEST_F(Recordsets, ARowBegunAnewForgetsWhatWasSetBefore) {
    const auto rows = all();
    rows->AddNew();
    rows->Set(u"名称", u"旧"_qs);
    rows->AddNew();
    EXPECT_EQ(rows->Get(u"名称").ToText(), QString());
    rows->Set(u"Key", u"T"_qs);
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"Select * from T"_qs), QStringList{u"|T|1|"_qs});
}

TEST_F(Recordsets, AnEditBegunAnewShowsTheRowAgain) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    rows->Edit();
    rows->Set(u"名称", u"改"_qs);
    rows->Edit();
    EXPECT_EQ(rows->Get(u"名称").ToText(), u"T"_qs);
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"Select 名称 from T"_qs), QStringList{u"T"_qs});
}

TEST_F(Recordsets, ARowThatGoesWhileItIsEditedIs3167) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    rows->Edit();
    rows->Set(u"名称", u"改"_qs);
    db_->Execute(u"delete * from T"_qs);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3167);
}

TEST_F(Recordsets, DeletingDropsTheRowInHand) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs});
    const auto rows = all();
    rows->Edit();
    rows->Set(u"名称", u"改"_qs);
    rows->Delete();
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
    EXPECT_EQ(rowsOf(*db_, u"Select Key from T"_qs), QStringList{u"T.1"_qs});
}

TEST_F(Recordsets, MovingAwayDropsTheRowInHand) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    rows->AddNew();
    rows->Set(u"Key", u"U"_qs);
    rows->MoveFirst();
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
    EXPECT_EQ(rowsOf(*db_, u"Select Key from T"_qs), QStringList{u"T"_qs});
}

TEST_F(Recordsets, ADeletedRowAnswers3167UntilTheNextMove) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs});
    const auto rows = all();
    rows->Delete();
    EXPECT_EQ(errorOf([&] { (void)rows->Get(u"Key"); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3167);
    rows->MoveNext();
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"T.1"_qs);
}

TEST_F(Recordsets, ARowThatAStatementDeletedAnswers3167AndRowsMayStillBeAdded) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    db_->Execute(u"delete * from T"_qs);
    EXPECT_EQ(errorOf([&] { (void)rows->Get(u"Key"); }), 3167);
    rows->AddNew();
    rows->Set(u"Key", u"U"_qs);
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"Select Key from T"_qs), QStringList{u"U"_qs});
}

TEST_F(Recordsets, ContentsAreReadWhenAskedForNotWhenOpened) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto first = all();
    EXPECT_EQ(first->Get(u"名称").ToText(), u"T"_qs);
    const auto second = all();
    second->Edit();
    second->Set(u"名称", u"改"_qs);
    second->Update();
    EXPECT_EQ(first->Get(u"名称").ToText(), u"改"_qs);
}

TEST_F(Recordsets, AValueTwiceInAUniqueIndexIs3022AndTheRowStaysInHand) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    rows->AddNew();
    rows->Set(u"Key", u"t"_qs);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    rows->Set(u"Key", u"T.1"_qs);
    rows->Update();
    EXPECT_EQ(rowsOf(*db_, u"Select Key from T"_qs), (QStringList{u"T"_qs, u"T.1"_qs}));
}

TEST_F(Recordsets, ARefusedChangeLeavesTheFileToOtherPrograms) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs});
    DBEngine other;
    const auto theirs = other.Workspaces(0).OpenDatabase(db_->Name());
    const auto writing = [&] {
        return errorOf([&] { theirs->Execute(u"Delete * from T where ID=0"_qs); });
    };
    const auto rows = all();
    rows->AddNew();
    rows->Set(u"Key", u"t"_qs);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    EXPECT_EQ(writing(), 0);
    rows->Edit();
    rows->Set(u"Key", u"t.1"_qs);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    EXPECT_EQ(writing(), 0);
    rows->Delete();
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3167);
    EXPECT_EQ(writing(), 0);
}

TEST_F(Recordsets, FindFirstMakesTheFirstMatchInItsOrderCurrent) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs, u"T.2"_qs});
    const auto rows = db_->OpenRecordset(u"Select * from T order by ID desc"_qs);
    rows->FindFirst(u"[Key] like 'T.*'"_qs);
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"T.2"_qs);
    rows->FindFirst(u"key = 'T'"_qs);
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"T"_qs);
}

TEST_F(Recordsets, FindFirstWithoutAMatchKeepsTheCurrentRow) {
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs});
    const auto rows = all();
    rows->MoveLast();
    rows->FindFirst(u"key = 'X'"_qs);
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_EQ(rows->Get(u"Key").ToText(), u"T.1"_qs);
}

TEST_F(Recordsets, FindFirstSeesOnlyItsOwnRowsAndTheRowsAddedThroughIt) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    addRows(*db_, u"T"_qs, {u"T.1"_qs});
    rows->FindFirst(u"key = 'T.1'"_qs);
    EXPECT_TRUE(rows->NoMatch());
    rows->AddNew();
    rows->Set(u"Key", u"T.2"_qs);
    rows->Update();
    rows->FindFirst(u"key = 'T.2'"_qs);
    EXPECT_FALSE(rows->NoMatch());
}

TEST_F(Recordsets, ClosedOneAnswers3420) {
    const auto rows = all();
    rows->Close();
    EXPECT_EQ(errorOf([&] { (void)rows->Eof(); }), 3420);
    EXPECT_EQ(errorOf([&] { rows->AddNew(); }), 3420);
    rows->Close();
}

// The number that the calls raise on a closed one.
static void expectClosed(const std::unique_ptr<Recordset>& rows) {
    rows->Close();
    const std::vector<std::function<void()>> calls{[&] { (void)rows->Bof(); },
                                                   [&] { (void)rows->RecordCount(); },
                                                   [&] { (void)rows->Fields(); },
                                                   [&] { (void)rows->Get(u"Key"); },
                                                   [&] { rows->Set(u"Key", u"x"_qs); },
                                                   [&] { rows->Edit(); },
                                                   [&] { rows->Update(); },
                                                   [&] { rows->Delete(); },
                                                   [&] { rows->MoveFirst(); },
                                                   [&] { rows->MoveLast(); },
                                                   [&] { rows->MoveNext(); },
                                                   [&] { rows->FindFirst(u"Key='T'"_qs); },
                                                   [&] { rows->Requery(); }};
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(errorOf(calls[i]), 3420) << i;
    }
}

TEST_F(Recordsets, ClosedOneAnswers3420ToEveryCallWhetherOrNotItHadRows) {
    expectClosed(all());
    addRows(*db_, u"T"_qs, {u"T"_qs, u"T.1"_qs});
    expectClosed(all());
}

TEST_F(Recordsets, OneOfAClosedDatabaseAnswers3420) {
    const auto rows = all();
    db_->Close();
    EXPECT_EQ(errorOf([&] { (void)rows->RecordCount(); }), 3420);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3420);
    EXPECT_EQ(errorOf([&] { rows->Requery(); }), 3420);
}

TEST_F(Recordsets, OneOfADroppedTableAnswers3420) {
    addRows(*db_, u"T"_qs, {u"T"_qs});
    const auto rows = all();
    db_->Execute(u"DROP TABLE T"_qs);
    EXPECT_EQ(errorOf([&] { (void)rows->Get(u"Key"); }), 3420);
}

} // namespace qvnd::jet
