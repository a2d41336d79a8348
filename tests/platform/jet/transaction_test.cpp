#include "support/FullDisk.h"
#include "support/JetStore.h"
#include "support/RestrictedProcess.h"

#include <QCoreApplication>

#include <chrono>
#include <optional>
#include <thread>

namespace qvnd::jet {

using test::errorOf;

// Two databases with an outline each; what another program sees of them tells what is lasting.
class Transactions : public test::JetStore {
protected:
    Transactions() : a_(create(u"a.mdb"_qs)), b_(create(u"b.mdb"_qs)) {
        a_->TableDefs().Append(outlineTable(u"T"_qs));
        b_->TableDefs().Append(outlineTable(u"T"_qs));
    }

    qsizetype seenByOthers(const QString& name) const {
        DBEngine other;
        return rowsOf(*other.Workspaces(0).OpenDatabase(pathOf(name)), u"select Key from T"_qs)
            .size();
    }
    static void add(Recordset& rows, const QString& key) {
        rows.AddNew();
        rows.Set(u"Key", key);
        rows.Update();
    }

    std::unique_ptr<Database> a_;
    std::unique_ptr<Database> b_;
};

TEST_F(Transactions, HoldBackTheChangesOfEveryDatabaseUntilTheyAreCommitted) {
    workspace_->BeginTrans();
    addRows(*a_, u"T"_qs, {u"x"_qs});
    addRows(*b_, u"T"_qs, {u"x"_qs});
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 0);
    EXPECT_EQ(seenByOthers(u"b.mdb"_qs), 0);
    workspace_->CommitTrans();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1);
    EXPECT_EQ(seenByOthers(u"b.mdb"_qs), 1);
}

TEST_F(Transactions, ShowTheirChangesToTheirOwnProgramAtOnce) {
    workspace_->BeginTrans();
    addRows(*a_, u"T"_qs, {u"x"_qs});
    EXPECT_EQ(rowsOf(*a_, u"select Key from T"_qs), QStringList{u"x"_qs});
}

TEST_F(Transactions, CommittingWithoutBeginningIs3034) {
    EXPECT_EQ(errorOf([&] { workspace_->CommitTrans(); }), 3034);
    workspace_->BeginTrans();
    workspace_->CommitTrans();
    EXPECT_EQ(errorOf([&] { workspace_->CommitTrans(); }), 3034);
}

TEST_F(Transactions, OneThatAFailureLeftOpenIsCommittedByTheNextBeginning) {
    workspace_->BeginTrans();
    addRows(*a_, u"T"_qs, {u"x"_qs});
    EXPECT_EQ(errorOf([&] { a_->TableDefs().Delete(u"none"_qs); }), 3265);
    EXPECT_TRUE(workspace_->InTransaction());
    workspace_->BeginTrans();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1);
    EXPECT_TRUE(workspace_->InTransaction());
}

TEST_F(Transactions, OneThatIsStillOpenIsCommittedWhenTheWorkspaceCloses) {
    workspace_->BeginTrans();
    a_->TableDefs().Delete(u"T"_qs);
    a_->TableDefs().Append(outlineTable(u"U"_qs));
    addRows(*a_, u"U"_qs, {u"x"_qs});
    addRows(*b_, u"T"_qs, {u"x"_qs});
    workspace_->Close();
    EXPECT_FALSE(workspace_->InTransaction());
    EXPECT_FALSE(a_->IsOpen());
    EXPECT_EQ(rowsOf(*open(u"a.mdb"_qs), u"select Key from U"_qs).size(), 1);
    EXPECT_EQ(seenByOthers(u"b.mdb"_qs), 1);
}

TEST_F(Transactions, OneThatIsStillOpenIsCommittedWhenTheEngineGoes) {
    {
        DBEngine other;
        const auto db = other.Workspaces(0).OpenDatabase(pathOf(u"a.mdb"_qs));
        other.Workspaces(0).BeginTrans();
        addRows(*db, u"T"_qs, {u"x"_qs});
    }
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1);
}

TEST_F(Transactions, AHandleThatOutlivesItsEngineIsClosed) {
    std::unique_ptr<Database> handle;
    {
        DBEngine other;
        handle = other.Workspaces(0).OpenDatabase(a_->Name());
        EXPECT_TRUE(handle->IsOpen());
    }
    EXPECT_FALSE(handle->IsOpen());
}

TEST_F(Transactions, AFailedStatementInOneTakesBackItselfAlone) {
    workspace_->BeginTrans();
    addRows(*a_, u"T"_qs, {u"x"_qs});
    addRows(*b_, u"T"_qs, {u"y"_qs, u"x"_qs});
    EXPECT_EQ(errorOf([&] {
                  b_->Execute(u"INSERT INTO T IN '"_qs + a_->Name() + u"' SELECT Key FROM T"_qs);
              }),
              3022);
    addRows(*a_, u"T"_qs, {u"z"_qs});
    workspace_->CommitTrans();
    EXPECT_EQ(rowsOf(*a_, u"select Key,ID from T"_qs), (QStringList{u"x|1"_qs, u"z|2"_qs}));
}

TEST_F(Transactions, ADatabaseClosedInOneIsCompleteInItsFile) {
    workspace_->BeginTrans();
    addRows(*b_, u"T"_qs, {u"x"_qs});
    b_->Close();
    EXPECT_FALSE(QFile::exists(pathOf(u"b.mdb-journal"_qs)));
    EXPECT_EQ(seenByOthers(u"b.mdb"_qs), 1);
    workspace_->CommitTrans();
}

TEST_F(Transactions, SettlingMakesTheChangesLastAndLeavesItOpen) {
    workspace_->BeginTrans();
    addRows(*a_, u"T"_qs, {u"x"_qs});
    workspace_->Settle();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1);
    addRows(*a_, u"T"_qs, {u"y"_qs});
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1);
    workspace_->CommitTrans();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 2);
}

TEST_F(Transactions, OneThatAFailureLeftOpenLastsOnceControlIsBackInTheEventLoop) {
    int count = 0;
    QCoreApplication application(count, nullptr);
    workspace_->BeginTrans();
    a_->Execute(u"Delete * from T"_qs);
    addRows(*a_, u"T"_qs, {u"x"_qs});
    QCoreApplication::processEvents();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1);
    EXPECT_TRUE(workspace_->InTransaction());
    addRows(*a_, u"T"_qs, {u"y"_qs});
    QCoreApplication::processEvents();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 2) << "each time anew";
}

// The errors of two openings of a table behind the event loop, in which the disk was full.
TEST_F(Transactions, WhatFailsInTheEventLoopIsToldOnceByTheNextCall) {
    const auto answer = test::RestrictedProcess::alone([this]() -> std::optional<long> {
        test::FullDisk disk;
        if (!disk.isOffered()) {
            return std::nullopt;
        }
        int count = 0;
        const QCoreApplication application(count, nullptr);
        workspace_->BeginTrans();
        addRows(*a_, u"T"_qs, {QString(200, u'x')});
        disk.fillFrom(1);
        QCoreApplication::processEvents();
        disk.empty();
        const auto opening = [this] { return errorOf([&] { (void)b_->OpenRecordset(u"T"_qs); }); };
        const long first = opening();
        return first * 10000 + opening();
    });
    if (!answer) {
        GTEST_SKIP() << "no filter of system calls";
    }
    EXPECT_EQ(*answer, error::storeDiskFull * 10000);
}

// The error of committing on a full disk, and whether the transaction is open behind it.
TEST_F(Transactions, OneThatCouldNotBeCommittedIsStillOpen) {
    const auto answer = test::RestrictedProcess::alone([this]() -> std::optional<long> {
        test::FullDisk disk;
        if (!disk.isOffered()) {
            return std::nullopt;
        }
        workspace_->BeginTrans();
        addRows(*a_, u"T"_qs, {QString(200, u'x')});
        disk.fillFrom(1);
        const long failure = errorOf([&] { workspace_->CommitTrans(); });
        return failure * 10 + (workspace_->InTransaction() ? 1 : 0);
    });
    if (!answer) {
        GTEST_SKIP() << "no filter of system calls";
    }
    EXPECT_EQ(*answer, error::storeDiskFull * 10 + 1);
}

TEST_F(Transactions, ARowAddedByItselfLastsAtOnce) {
    const auto rows = a_->OpenRecordset(u"T"_qs);
    add(*rows, u"x"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1);
}

TEST_F(Transactions, EditedAndDeletedRowsLastAtOnce) {
    addRows(*a_, u"T"_qs, {u"x"_qs, u"y"_qs});
    const auto rows = a_->OpenRecordset(u"T"_qs);
    rows->Delete();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1);
    rows->MoveLast();
    rows->Edit();
    rows->Set(u"Key", u"z"_qs);
    rows->Update();
    DBEngine other;
    EXPECT_EQ(rowsOf(*other.Workspaces(0).OpenDatabase(a_->Name()), u"select Key from T"_qs),
              QStringList{u"z"_qs});
}

TEST_F(Transactions, RowsAddedInARunLastWhenTheirRecordsetCloses) {
    const auto rows = a_->OpenRecordset(u"T"_qs);
    for (int i = 0; i < 5; ++i) {
        add(*rows, QString::number(i));
    }
    rows->Close();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 5);
}

TEST_F(Transactions, RowsAddedInARunLastAtTheNextCallOfAnotherKind) {
    const auto rows = a_->OpenRecordset(u"T"_qs);
    const auto addTwo = [&](const QString& key) {
        const qsizetype before = seenByOthers(u"a.mdb"_qs);
        add(*rows, key + u"1"_qs);
        EXPECT_EQ(seenByOthers(u"a.mdb"_qs), before + 1) << "a run begins";
        add(*rows, key + u"2"_qs);
    };
    addTwo(u"a"_qs);
    (void)b_->OpenRecordset(u"T"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 2);
    addTwo(u"b"_qs);
    b_->Execute(u"Delete * from T"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 4);
    addTwo(u"c"_qs);
    b_->Close();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 6);
    addTwo(u"d"_qs);
    workspace_->Settle();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 8);
    addTwo(u"e"_qs);
    const auto again = open(u"b.mdb"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 10);
    addTwo(u"f"_qs);
    (void)create(u"c.mdb"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 12);
    addTwo(u"g"_qs);
    workspace_->AboutToReplace(pathOf(u"b.mdb"_qs), pathOf(u"c.mdb"_qs));
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 14);
}

TEST_F(Transactions, RowsAddedInARunLastOnceControlIsBackInTheEventLoop) {
    int count = 0;
    QCoreApplication application(count, nullptr);
    const auto rows = a_->OpenRecordset(u"T"_qs);
    add(*rows, u"x"_qs);
    add(*rows, u"y"_qs);
    QCoreApplication::processEvents();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 2);
    add(*rows, u"z"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 3) << "another run begins";
}

TEST_F(Transactions, AStatementInOneLastsOnceControlIsBackInTheEventLoop) {
    int count = 0;
    const QCoreApplication application(count, nullptr);
    addRows(*a_, u"T"_qs, {u"x"_qs});
    workspace_->BeginTrans();
    a_->Execute(u"Delete * from T"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 0);
}

// Another program would otherwise wait as long as the run takes.
TEST_F(Transactions, RowsOfALongRunLastWhileItGoesOn) {
    const auto rows = a_->OpenRecordset(u"T"_qs);
    add(*rows, u"a"_qs);
    add(*rows, u"b"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 1) << "the run has just begun";
    std::this_thread::sleep_for(std::chrono::milliseconds(260));
    add(*rows, u"c"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 3);
    add(*rows, u"d"_qs);
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 3) << "and goes on";
}

TEST_F(Transactions, ReadingAnotherRecordsetDoesNotEndARunAndSeesIt) {
    addRows(*a_, u"T"_qs, {u"x"_qs, u"y"_qs, u"z"_qs});
    const auto source = a_->OpenRecordset(u"select * from T"_qs);
    const auto target = b_->OpenRecordset(u"T"_qs);
    for (; !source->Eof(); source->MoveNext()) {
        add(*target, source->Get(u"Key").ToText());
    }
    EXPECT_EQ(target->RecordCount(), 3);
    target->MoveLast();
    EXPECT_EQ(target->Get(u"Key").ToText(), u"z"_qs);
    target->Close();
    EXPECT_EQ(seenByOthers(u"b.mdb"_qs), 3);
}

TEST_F(Transactions, ARefusedRowInARunLeavesTheOthersStanding) {
    const auto rows = a_->OpenRecordset(u"T"_qs);
    add(*rows, u"x"_qs);
    add(*rows, u"y"_qs);
    EXPECT_EQ(errorOf([&] { add(*rows, u"x"_qs); }), 3022);
    add(*rows, u"z"_qs);
    rows->Close();
    EXPECT_EQ(seenByOthers(u"a.mdb"_qs), 3);
}

TEST_F(Transactions, ChangesOfAnotherProgramAreCountedAndOwnOnesAreNot) {
    const int before = a_->ForeignChanges();
    addRows(*a_, u"T"_qs, {u"own"_qs});
    EXPECT_EQ(a_->ForeignChanges(), before);
    DBEngine other;
    addRows(*other.Workspaces(0).OpenDatabase(a_->Name()), u"T"_qs, {u"theirs"_qs});
    EXPECT_GT(a_->ForeignChanges(), before);
    EXPECT_EQ(a_->ForeignChanges(), a_->ForeignChanges());
    EXPECT_EQ(b_->ForeignChanges(), 0);
}

// The number is taken while the other program still writes; it is known only once that has ended.
TEST_F(Transactions, ARowThatWaitsForAnotherProgramIsNumberedBehindItsRows) {
    DBEngine other;
    const auto theirs = other.Workspaces(0).OpenDatabase(a_->Name());
    other.Workspaces(0).BeginTrans();
    addRows(*theirs, u"T"_qs, {u"theirs"_qs});
    std::thread ending([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        other.Workspaces(0).CommitTrans();
    });
    const auto started = std::chrono::steady_clock::now();
    addRows(*a_, u"T"_qs, {u"own"_qs});
    EXPECT_GT(std::chrono::steady_clock::now() - started, std::chrono::milliseconds(50));
    ending.join();
    EXPECT_EQ(rowsOf(*a_, u"select Key,ID from T order by ID"_qs),
              (QStringList{u"theirs|1"_qs, u"own|2"_qs}));
}

TEST_F(Transactions, AFileThatAnotherProgramWritesIsOpenedWithoutWaitingForIt) {
    DBEngine other;
    const auto theirs = other.Workspaces(0).OpenDatabase(a_->Name());
    other.Workspaces(0).BeginTrans();
    addRows(*theirs, u"T"_qs, {u"x"_qs});
    ASSERT_TRUE(QFile::exists(pathOf(u"a.mdb-journal"_qs)));
    DBEngine third;
    const auto started = std::chrono::steady_clock::now();
    (void)third.Workspaces(0).OpenDatabase(a_->Name());
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
}

TEST_F(Transactions, AFileThatAnotherProgramHoldsIs3260AfterAWhile) {
    DBEngine other;
    const auto theirs = other.Workspaces(0).OpenDatabase(a_->Name());
    other.Workspaces(0).BeginTrans();
    addRows(*theirs, u"T"_qs, {u"x"_qs});
    EXPECT_EQ(errorOf([&] { a_->Execute(u"Delete * from T"_qs); }), 3260);
    other.Workspaces(0).CommitTrans();
    EXPECT_EQ(errorOf([&] { a_->Execute(u"Delete * from T"_qs); }), 0);
}

} // namespace qvnd::jet
