#include "platform/jet/LastingTogether.h"

#include "support/Commits.h"
#include "support/JetStore.h"

namespace qvnd::jet {

class LastingTogetherTest : public test::JetStore {
protected:
    LastingTogetherTest() : database_(create(QStringLiteral("a.mdb"))) {
        database_->TableDefs().Append(outlineTable(QStringLiteral("T")));
    }
    void change() { addRows(*database_, QStringLiteral("T"), {QStringLiteral("T")}); }
    void changeTwice() {
        change();
        database_->Execute(QStringLiteral("Delete * from T"));
    }

    std::unique_ptr<Database> database_;
};

TEST_F(LastingTogetherTest, AllChangesLastAtTheEndAtOnce) {
    test::Commits commits(database_->Name());
    LastingTogether together(*workspace_);
    changeTwice();
    EXPECT_EQ(commits.count(), 0);
    together.end();
    EXPECT_EQ(commits.count(), 1);
    EXPECT_FALSE(workspace_->InTransaction());
}

TEST_F(LastingTogetherTest, WhatWasDoneBeforeAFailureLasts) {
    test::Commits commits(database_->Name());
    EXPECT_EQ(test::errorOf([&] {
                  const LastingTogether together(*workspace_);
                  change();
                  database_->Execute(QStringLiteral("Delete * from 没有"));
              }),
              error::tableNotFound);
    EXPECT_EQ(commits.count(), 1);
    EXPECT_FALSE(workspace_->InTransaction());
}

TEST_F(LastingTogetherTest, ATransactionThatWasOpenStaysOpen) {
    test::Commits commits(database_->Name());
    workspace_->BeginTrans();
    {
        LastingTogether together(*workspace_);
        change();
        together.end();
    }
    EXPECT_TRUE(workspace_->InTransaction());
    EXPECT_EQ(commits.count(), 0);
    workspace_->CommitTrans();
    EXPECT_EQ(commits.count(), 1);
}

} // namespace qvnd::jet
