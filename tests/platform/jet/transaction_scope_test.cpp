#include "platform/jet/TransactionScope.h"

#include "support/Commits.h"
#include "support/JetStore.h"

namespace qvnd::jet {

class TransactionScopeTest : public test::JetStore {
protected:
    TransactionScopeTest() : database_(create(QStringLiteral("a.mdb"))) {
        database_->TableDefs().Append(outlineTable(QStringLiteral("T")));
    }
    void change() { addRows(*database_, QStringLiteral("T"), {QStringLiteral("T")}); }
    void changeTwice() {
        change();
        database_->Execute(QStringLiteral("Delete * from T"));
    }

    std::unique_ptr<Database> database_;
};

TEST_F(TransactionScopeTest, AllChangesLastAtTheEndAtOnce) {
    test::Commits commits(database_->Name());
    TransactionScope scope(*workspace_);
    changeTwice();
    EXPECT_EQ(commits.count(), 0);
    scope.commit();
    EXPECT_EQ(commits.count(), 1);
    EXPECT_FALSE(workspace_->InTransaction());
}

TEST_F(TransactionScopeTest, WhatWasDoneBeforeAFailureLasts) {
    test::Commits commits(database_->Name());
    EXPECT_EQ(test::errorOf([&] {
                  const TransactionScope scope(*workspace_);
                  change();
                  database_->Execute(QStringLiteral("Delete * from 没有"));
              }),
              error::tableNotFound);
    EXPECT_EQ(commits.count(), 1);
    EXPECT_FALSE(workspace_->InTransaction());
}

TEST_F(TransactionScopeTest, ATransactionThatWasOpenStaysOpen) {
    test::Commits commits(database_->Name());
    workspace_->BeginTrans();
    {
        TransactionScope scope(*workspace_);
        change();
        scope.commit();
    }
    EXPECT_TRUE(workspace_->InTransaction());
    EXPECT_EQ(commits.count(), 0);
    workspace_->CommitTrans();
    EXPECT_EQ(commits.count(), 1);
}

TEST_F(TransactionScopeTest, OneThatHasCommittedLeavesALaterTransactionOpen) {
    {
        TransactionScope scope(*workspace_);
        scope.commit();
        workspace_->BeginTrans();
    }
    EXPECT_TRUE(workspace_->InTransaction());
}

} // namespace qvnd::jet
